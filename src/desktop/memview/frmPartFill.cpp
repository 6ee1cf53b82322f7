// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/memview/frmPartFill.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/modSoftFace.h"
#include "desktop/memview/frmMemDatGrid.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "memview/memDatTexts.h"
#include "memview/partialFill.h"

namespace k520 {

namespace {

/// Four digits, perhaps with an "H", and room for what a user pastes around them.
constexpr int longestText = 12;
constexpr int fieldChars = 10;

QLineEdit* hexField(const char* name, const std::string& text, QWidget* parent) {
    auto* field = ownNamed<QLineEdit>(name, qText(text), parent);
    field->setMaxLength(longestText);
    field->setMaximumWidth(field->fontMetrics().horizontalAdvance(u'W') * fieldChars);
    return field;
}

}  // namespace

frmPartFill::frmPartFill(QWidget* parent) : QDialog(parent), lblRefusal_(own<QLabel>(this)) {
    const auto [from, to, value] = partialFill::initial();
    fields_ = {hexField("txtFillFrom", from, this), hexField("txtFillTo", to, this),
               hexField("txtFillValue", value, this)};
    setObjectName(QStringLiteral("frmPartFill"));
    setWindowTitle(qSay(texts::partFillTitle));
    layOut();
    fields_.front()->setFocus();
    fields_.front()->selectAll();
}

void frmPartFill::layOut() {
    auto* form = own<QFormLayout>();
    const Text captions[] = {texts::fillFrom, texts::fillTo, texts::fillValue};
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        form->addRow(qSay(captions[i]), fields_[i]);
        nameControl(*fields_[i], qSay(captions[i]));
        connect(fields_[i], &QLineEdit::textEdited, this, &frmPartFill::clearRefusal);
    }
    lblRefusal_->setObjectName(QStringLiteral("lblRefusal"));
    lblRefusal_->setWordWrap(true);
    clearRefusal();

    auto* buttons = own<QDialogButtonBox>(this);
    auto* fill = buttons->addButton(qSay(texts::fillNow), QDialogButtonBox::AcceptRole);
    fill->setObjectName(QStringLiteral("cmdOk"));
    fill->setDefault(true);
    buttons->addButton(softText(SoftText::portCancel), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPartFill::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmPartFill::reject);

    auto* column = own<QVBoxLayout>(this);
    column->addLayout(form);
    column->addWidget(lblRefusal_);
    column->addStretch(1);
    column->addWidget(buttons);
}

void frmPartFill::accept() {
    clearRefusal();
    const auto text = [&](partialFill::Field field) {
        return stdText(fields_[static_cast<std::size_t>(field)]->text());
    };
    const auto refusal =
        partialFill::fill({text(partialFill::Field::from), text(partialFill::Field::to),
                           text(partialFill::Field::value)});
    if (refusal) {
        showRefusal(*fields_[static_cast<std::size_t>(refusal->field)], qText(refusal->reason));
        return;
    }
    QDialog::accept();
}

void frmPartFill::showRefusal(QLineEdit& field, const QString& reason) {
    field.setPalette(refusedPalette(field.palette()));
    field.setAccessibleDescription(reason);
    field.setFocus();
    field.selectAll();
    lblRefusal_->setForegroundRole(QPalette::WindowText);
    lblRefusal_->setText(reason);
}

/// The place of the reason holds a hint meanwhile, so that nothing moves.
void frmPartFill::clearRefusal() {
    for (QLineEdit* field : fields_) {
        field->setPalette({});
        field->setAccessibleDescription({});
    }
    lblRefusal_->setForegroundRole(QPalette::PlaceholderText);
    lblRefusal_->setText(qSay(texts::fillHint));
}

}  // namespace k520
