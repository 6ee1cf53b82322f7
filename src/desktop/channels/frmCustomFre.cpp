// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmCustomFre.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "app/Guard.h"
#include "channels/modModel.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "program/modFileCmd.h"

namespace k520 {

namespace {

QLineEdit* limitBox(const char* name, const std::string& text, QWidget* parent) {
    auto* box = ownNamed<QLineEdit>(name, qText(text), parent);
    box->setInputMethodHints(Qt::ImhPreferNumbers);
    box->setAlignment(Qt::AlignRight);
    return box;
}

}  // namespace

frmCustomFre::frmCustomFre(QWidget* parent)
    : QDialog(parent),
      txtFreMin_(limitBox("txtFreMin", modModel::state().customMin, this)),
      txtFreMax_(limitBox("txtFreMax", modModel::state().customMax, this)),
      cmdOk_(ownNamed<QPushButton>("cmdOk", this)),
      cmdCancel_(ownNamed<QPushButton>("cmdCancel", this)),
      form_(own<QFormLayout>(this)) {
    form_->addRow(own<QLabel>(this), txtFreMin_);
    form_->addRow(own<QLabel>(this), txtFreMax_);
    auto* buttons = own<QHBoxLayout>();
    buttons->addStretch();
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdCancel_);
    form_->addRow(buttons);
    form_->setVerticalSpacing(form_->verticalSpacing() + 4);
    cmdOk_->setDefault(true);
    connect(cmdOk_, &QPushButton::clicked, this, [this] {
        modFileCmd::customRangeOk(stdText(txtFreMin_->text()), stdText(txtFreMax_->text()));
        accept();
    });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);
    InitFace();
    txtFreMin_->setFocus();
    txtFreMin_->selectAll();
}

void frmCustomFre::InitFace() {
    guarded("frmCustomFre->InitFace", [this] {
        setWindowTitle(softText(SoftText::customTitle));
        const std::pair<QLineEdit*, SoftText> limits[] = {{txtFreMin_, SoftText::customMin},
                                                          {txtFreMax_, SoftText::customMax}};
        for (const auto& [box, text] : limits) {
            auto* label = qobject_cast<QLabel*>(form_->labelForField(box));
            label->setText(softText(text));
            label->setBuddy(box);
            nameControl(*box, softText(text));
        }
        captionControl(*cmdOk_, softText(SoftText::customOk));
        captionControl(*cmdCancel_, softText(SoftText::customCancel));
    });
}

}  // namespace k520
