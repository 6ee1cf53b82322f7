// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <QAbstractButton>
#include <QLabel>
#include <memory>

#include "app/frmTreeView.h"
#include "channels/frmChMem.h"
#include "channels/frmCustomFre.h"
#include "desktop/Desktop.h"
#include "link/frmCommun.h"
#include "link/frmRadioInfo.h"
#include "link/frmToolCom.h"
#include "memview/frmMemDat.h"
#include "settings/frmSysSet.h"

namespace k520 {
namespace {

template <class Window>
std::unique_ptr<QWidget> make() {
    return std::make_unique<Window>();
}

/// A window with what it says in Chinese and in English: its title, then some of its controls.
struct Face {
    std::unique_ptr<QWidget> (*open)();
    std::vector<std::pair<const char*, const char*>> controls;  ///< and which property
    std::string chinese, english;
};

const Face faces[] = {
    {make<frmCommun>, {{"cmdRead", "text"}}, "通信|读频(&R)", "Communication|&Read"},
    {make<frmToolCom>, {{"fraToolCom", "title"}}, "通信端口|设置", "Communication Port|Set"},
    {make<frmRadioInfo>,
     {{"fraMain", "title"}, {"lblLastPc", "text"}, {"txtLastPc", "accessibleName"}},
     "|本机信息|上次写频时间|上次写频时间",
     "|Radio Info|Write Data Last Time|Write Data Last Time"},
    {make<frmChMem>,
     {{"fraModel", "title"}, {"cboFrequency", "accessibleName"}},
     "信道信息|机型信息|频率",
     "Channel Information|Model Information|Frequency"},
    {make<frmCustomFre>,
     {{"txtFreMin", "accessibleName"}, {"txtFreMax", "accessibleName"}, {"cmdOk", "text"}},
     "自定义频率范围|频率下限[MHz]|频率上限[MHz]|确定",
     "Custom|Min [MHz]|Max [MHz]|OK"},
    {make<frmSysSet>,
     {{"fraOption", "title"}},
     "整机设置|整机设置",
     "Optional Features|Optional Features"},
    {make<frmMemDat>, {}, "", ""},
    {make<frmTreeView>, {}, "", ""},
};

using Windows = test::Desktop;

/// The controls that a screen reader could not name.
std::string nameless(const QWidget& window) {
    std::string all;
    for (const auto* control : window.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        const auto* label = qobject_cast<const QLabel*>(control);
        const bool named = label != nullptr || !control->accessibleName().isEmpty() ||
                           (button != nullptr && !button->text().isEmpty());
        const QString name = control->objectName();
        if (!named && control->focusPolicy() != Qt::NoFocus && !name.isEmpty() &&
            !name.startsWith(QLatin1String("qt_"))) {
            all += stdText(name) + " ";
        }
    }
    return all;
}

TEST_F(Windows, SpeakTheLanguageAndNameTheirControlsWithoutOne) {
    for (const int language : {1, 2, 3}) {
        forget();
        start(language);
        optionPanel::InitFace();
        optionPanel::InitOpt();
        for (const auto& [open, controls, chinese, english] : faces) {
            const auto window = open();
            std::string all = stdText(window->windowTitle());
            for (const auto& [control, what] : controls) {
                all += "|" + said(*window, control, what);
            }
            if (language != mdimoduMain::languageTraditional && !controls.empty()) {
                EXPECT_EQ(all, language == mdimoduMain::languageChinese ? chinese : english);
            }
            EXPECT_EQ(nameless(*window), "") << english;
        }
        EXPECT_EQ(failures(), std::vector<std::string>{});
    }
}

}  // namespace
}  // namespace k520
