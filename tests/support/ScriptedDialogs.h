// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "base/Dialogs.h"
#include "base/RuntimeError.h"

namespace k520::test {

/// Dialogs by script, in force from their making to their end. The test fails on a question that
/// is not the next one answered, and at the end on what is left in either list.
class ScriptedDialogs : public Dialogs {
  public:
    using Texts = std::vector<std::string>;

    ScriptedDialogs() { setDialogs(this); }
    ~ScriptedDialogs() override {
        setDialogs(nullptr);
        EXPECT_EQ(answers, Texts{}) << "nobody asked";
        EXPECT_EQ(shown, Texts{}) << "not expected";
    }
    bool ask(const std::string& title, const std::string& text, bool /*usual*/) override {
        return replyTo("ask", title + "|" + text) == "yes";
    }
    SaveAnswer askToSave(const std::string& title, const std::string& text) override {
        const auto reply = replyTo("changes", title + "|" + text);
        return reply == "save"   ? SaveAnswer::save
               : reply == "drop" ? SaveAnswer::dontSave
                                 : SaveAnswer::cancel;
    }
    void tell(BoxIcon icon, const std::string& title, const std::string& text) override {
        const Texts names{"question|", "exclamation|", "critical|"};
        shown.push_back(names.at(static_cast<std::size_t>(icon)) + title + "|" + text);
        if (onTell) {
            onTell();
        }
    }
    std::string openFile(const FileChoice& c) override {
        return replyTo("open", c.filter + "|" + c.folder + "|" + c.defaultExtension);
    }
    std::string saveFile(const FileChoice& c) override {
        return replyTo("save", c.filter + "|" + c.folder + "|" + c.defaultExtension + "|" + c.name);
    }
    void customRange() override { replyTo("range", ""); }
    void openDocument(const std::string& path) override { replyTo("document", path); }
    void print(const std::string& html) override { replyTo("print", html); }
    /// Returns what was shown, and forgets it.
    Texts take() { return std::exchange(shown, {}); }

    /// In order: "ask yes", "ask no", "changes save", "changes drop", "changes cancel", "open " or
    /// "save " and a path (none = cancelled), "range ", "document ", "print ", or a kind and "fail"
    /// for a dialog that fails with 57.
    Texts answers;
    /// What is looked at while a box is open.
    std::function<void()> onTell;
    /// In order: the kind, of a box its icon, then title and text, or filter and folder ...
    Texts shown;

  private:
    std::string replyTo(const std::string& kind, const std::string& what) {
        shown.push_back(kind + "|" + what);
        if (answers.empty() || !answers.front().starts_with(kind + " ")) {
            ADD_FAILURE() << "no answer to " << shown.back();
            return {};
        }
        const std::string reply = answers.front().substr(kind.size() + 1);
        answers.erase(answers.begin());
        return reply == "fail" ? throw RuntimeError(errNum::deviceIo, "dialog") : reply;
    }
};

}  // namespace k520::test
