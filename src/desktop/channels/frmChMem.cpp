// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChMem.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

#include "app/Guard.h"
#include "app/mainMenus.h"
#include "channels/modModel.h"
#include "desktop/channels/frmChEditors.h"
#include "desktop/channels/frmChGrid.h"
#include "desktop/channels/frmChLists.h"
#include "desktop/channels/frmChWords.h"
#include "desktop/settings/frmOptPanel.h"
#include "desktop/widgets/SteadyComboBox.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

void fill(const modModel::DropDown& list, QComboBox& box) {
    const QSignalBlocker silent(box);
    box.clear();
    for (const std::string& item : list.items) {
        box.addItem(qText(item));
    }
    box.setCurrentIndex(list.selected);
}

constexpr int noticeMargin = 6;

/// Seen on light and dark desktops alike.
QPalette noticeColours() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(255, 214, 102));
    palette.setColor(QPalette::WindowText, Qt::black);
    return palette;
}

void caption(QLabel& label, QWidget& control, SoftText text, char mnemonic) {
    label.setText(withMnemonic(softText(text), mnemonic));
    label.setBuddy(&control);
    nameControl(control, softText(text));
}

}  // namespace

frmChMem::frmChMem(QWidget* parent)
    : QWidget(parent),
      lblNotice_(ownNamed<QLabel>("lblNotice")),
      fraModel_(ownNamed<frmChLists>("fraModel")),
      lblModel_(own<QLabel>(fraModel_)),
      cboModel_(ownNamed<SteadyComboBox>("cboModel", fraModel_)),
      lblFrequency_(own<QLabel>(fraModel_)),
      cboFrequency_(ownNamed<SteadyComboBox>("cboFrequency", fraModel_)),
      vsfgGridCh_(own<frmChGrid>()),
      words_(own<frmChWords>(*vsfgGridCh_)),
      panel_(own<frmOptPanel>()) {
    layOut();
    setFocusProxy(vsfgGridCh_);
    connect(cboModel_, &QComboBox::activated, this, &frmChMem::modelChosen);
    connect(cboFrequency_, &QComboBox::activated, this, &frmChMem::bandChosen);
    SetSoftFace();
    refresh();
}

void frmChMem::layOut() {
    fraModel_->add(*lblModel_, *cboModel_);
    fraModel_->add(*lblFrequency_, *cboFrequency_);
    lblNotice_->setWordWrap(true);
    lblNotice_->setTextFormat(Qt::PlainText);
    lblNotice_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblNotice_->setMargin(noticeMargin);
    lblNotice_->setAutoFillBackground(true);
    lblNotice_->setPalette(noticeColours());
    lblNotice_->hide();
    auto* channels = own<QWidget>();
    auto* column = own<QVBoxLayout>(channels);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(lblNotice_);
    column->addWidget(fraModel_);
    auto* sides = own<QSplitter>(Qt::Horizontal);
    sides->addWidget(vsfgGridCh_);
    sides->addWidget(words_);
    sides->setStretchFactor(0, 2);
    sides->setStretchFactor(1, 1);
    sides->setChildrenCollapsible(false);
    words_->hide();
    column->addWidget(sides, 1);
    auto* parts = own<QSplitter>(Qt::Horizontal);
    parts->addWidget(channels);
    parts->addWidget(panel_);
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 0);
    parts->setCollapsible(0, false);
    own<QVBoxLayout>(this)->addWidget(parts);
}

void frmChMem::SetSoftFace() {
    guarded("modChMem->ChInfoInitFace", [this] {
        setWindowTitle(softText(SoftText::channelTitle));
        nameControl(*vsfgGridCh_, windowTitle());
        fraModel_->setTitle(softText(SoftText::modelFrame));
        caption(*lblModel_, *cboModel_, SoftText::modelLabel, mainMenus::modelLetter);
        caption(*lblFrequency_, *cboFrequency_, SoftText::bandLabel, mainMenus::bandLetter);
    });
}

void frmChMem::refresh() {
    fill(modModel::state().cboModel, *cboModel_);
    fill(modModel::state().cboFrequency, *cboFrequency_);
    vsfgGridCh_->fit();
    words_->refresh();
}

void frmChMem::showWords(bool shown) {
    words_->setVisible(shown);
    words_->refresh();
}

void frmChMem::showNotice(const QString& text) {
    lblNotice_->setText(text);
    lblNotice_->setAccessibleName(text);
    lblNotice_->setVisible(!text.isEmpty());
}

void frmChMem::showBand() {
    cboFrequency_->setFocus(Qt::OtherFocusReason);
}

frmOptPanel* frmChMem::panel() const {
    return panel_;
}

frmChGrid* frmChMem::grid() const {
    return vsfgGridCh_;
}

void frmChMem::modelChosen(int index) {
    if (EditTable::commitAll()) {
        modModel::selectModel(index);
    }
    refresh();
}

void frmChMem::bandChosen(int index) {
    if (EditTable::commitAll()) {
        modModel::chooseBand(index);
    }
    refresh();
}

}  // namespace k520
