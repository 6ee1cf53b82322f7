// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Dialogs.h"

namespace k520 {

namespace {

class SilentDialogs : public Dialogs {
  public:
    bool ask(const std::string&, const std::string&, bool) override { return false; }
    SaveAnswer askToSave(const std::string&, const std::string&) override {
        return SaveAnswer::cancel;
    }
    void tell(BoxIcon, const std::string&, const std::string&) override {}
    std::string openFile(const FileChoice&) override { return {}; }
    std::string saveFile(const FileChoice&) override { return {}; }
    void customRange() override {}
    void openDocument(const std::string&) override {}
    void print(const std::string&) override {}
};

SilentDialogs silentDialogs;
Dialogs* dialogsInForce = nullptr;

}  // namespace

Dialogs& theDialogs() noexcept {
    return dialogsInForce != nullptr ? *dialogsInForce : silentDialogs;
}

void setDialogs(Dialogs* dialogs) noexcept {
    dialogsInForce = dialogs;
}

}  // namespace k520
