// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Dialogs.h"

namespace k520 {

/// The questions, boxes and choosers as modal windows over the active window. In force from its
/// making to its end.
class QtDialogs : public Dialogs {
  public:
    QtDialogs();
    ~QtDialogs() override;
    QtDialogs(const QtDialogs&) = delete;
    QtDialogs& operator=(const QtDialogs&) = delete;

    bool ask(const std::string& title, const std::string& text, bool usual) override;
    SaveAnswer askToSave(const std::string& title, const std::string& text) override;
    void tell(BoxIcon icon, const std::string& title, const std::string& text) override;
    std::string openFile(const FileChoice& choice) override;
    std::string saveFile(const FileChoice& choice) override;
    void customRange() override;
    void openDocument(const std::string& path) override;
    void print(const std::string& html) override;
};

}  // namespace k520
