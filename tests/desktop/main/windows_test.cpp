// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <cmath>

#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "desktop/Desktop.h"
#include "desktop/channels/frmChMem.h"
#include "desktop/channels/frmCustomFre.h"
#include "desktop/link/frmCommun.h"
#include "desktop/link/frmRadioInfo.h"
#include "desktop/link/frmToolCom.h"
#include "desktop/main/frmShowErr.h"
#include "desktop/main/frmTreeView.h"
#include "desktop/memview/frmMemDat.h"
#include "desktop/settings/frmSysSet.h"
#include "desktop/widgets/CellGridModel.h"
#include "desktop/widgets/ClearStyle.h"
#include "desktop/widgets/DesktopClock.h"
#include "desktop/widgets/LineListModel.h"
#include "desktop/widgets/icons.h"
#include "settings/optionPanel.h"

namespace k520 {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

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
        resetModules();
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

constexpr auto strict = QAbstractItemModelTester::FailureReportingMode::Fatal;

TEST(CellGridModel, ShowsTheGridWithItsTitlesAsHeaders) {
    CellGrid grid;
    grid.reset(3, 4);
    CellGridModel model(grid, {.tip = [](int row, int) { return QString::number(row); }}, nullptr);
    const QAbstractItemModelTester tester(&model, strict);
    grid.setText(0, 2, "Two");
    grid.setText(2, 0, "二");
    grid.setText(1, 3, "x");
    grid.setBackground(1, 3, Colour{250, 240, 0});
    grid.setBackground(1, 1, Colour{10, 0, 200});
    EXPECT_EQ(model.rowCount() * 10 + model.columnCount(), 23);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Two"));
    EXPECT_EQ(model.headerData(1, Qt::Vertical, Qt::DisplayRole), qText("二"));
    const std::tuple<int, int, int, QVariant> cases[] = {
        {1, 3, Qt::DisplayRole, QStringLiteral("x")},
        {1, 3, Qt::BackgroundRole, QColor(250, 240, 0)},
        {1, 3, Qt::ForegroundRole, QColor(Qt::black)},
        {1, 1, Qt::ForegroundRole, QColor(Qt::white)},
        {2, 1, Qt::BackgroundRole, {}},
        {2, 1, Qt::ToolTipRole, QStringLiteral("2")}};
    for (const auto& [row, column, role, value] : cases) {
        EXPECT_EQ(model.data(model.indexOf(row, column), role), value) << role;
    }
    EXPECT_FALSE(model.indexOf(0, 1).isValid() || model.indexOf(3, 1).isValid());
}

TEST(CellGridModel, ManyChangesReachTheViewsTogether) {
    CellGrid grid;
    grid.reset(10, 10);
    CellGridModel model(grid, {}, nullptr);
    QSignalSpy cells(&model, &CellGridModel::dataChanged);
    QSignalSpy titles(&model, &CellGridModel::headerDataChanged);
    grid.setText(2, 3, "a");
    grid.setText(7, 5, "b");
    EXPECT_EQ(cells.count(), 0);
    QApplication::processEvents();
    ASSERT_EQ(cells.count(), 1);
    EXPECT_EQ(cells[0][0].toModelIndex(), model.indexOf(2, 3));
    EXPECT_EQ(cells[0][1].toModelIndex(), model.indexOf(7, 5));
    EXPECT_EQ(titles.count(), 0);
    grid.setText(0, 4, "title");
    QApplication::processEvents();
    EXPECT_EQ(titles.count(), 1);
    // A change of a cell that is gone when the views are told.
    grid.setText(9, 9, "gone");
    grid.reset(2, 2);
    QApplication::processEvents();
    EXPECT_EQ(cells.count(), 1);
    EXPECT_EQ(model.rowCount(), 1);
}

TEST(CellGridModel, EditsGoThroughTheRules) {
    CellGrid grid;
    grid.reset(3, 3);
    CellGridModel model(grid,
                        {.mayEdit = [](int row, int) { return row == 2; },
                         .edited =
                             [&](int row, int column, const QString& text) {
                                 grid.setText(row, column, stdText(text));
                                 return text.size() == 1;
                             }},
                        nullptr);
    EXPECT_FALSE(model.flags(model.indexOf(1, 1)) & Qt::ItemIsEditable);
    EXPECT_TRUE(model.flags(model.indexOf(2, 1)) & Qt::ItemIsEditable);
    EXPECT_TRUE(model.setData(model.indexOf(2, 1), QStringLiteral("q"), Qt::EditRole));
    EXPECT_FALSE(model.setData(model.indexOf(2, 2), QStringLiteral("qq"), Qt::EditRole));
    EXPECT_FALSE(model.setData(model.indexOf(2, 1), QStringLiteral("z"), Qt::DisplayRole));
    EXPECT_EQ(grid.text(2, 1) + grid.text(2, 2), "qqq");
}

TEST(LineListModel, FollowsItsList) {
    LineList list;
    list.insertSelected(0, "first");
    LineListModel model(list, nullptr);
    const QAbstractItemModelTester tester(&model, strict);
    QModelIndex selected;
    QObject::connect(&model, &LineListModel::lineSelected,
                     [&](const QModelIndex& index) { selected = index; });
    list.insertSelected(1, "第二");
    list.insertSelected(0, "zeroth");
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(selected, model.index(0));
    EXPECT_EQ(model.data(model.index(2), Qt::DisplayRole), qText("第二"));
    list.clear();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(Icons, AreDrawnInTheColourOfThePalette) {
    const QPalette before = QApplication::palette();
    const QIcon icon = icons::line(QStringLiteral("file-open"));
    for (const QColor colour : {QColor(Qt::white), QColor(20, 30, 40)}) {
        QPalette palette = before;
        palette.setColor(QPalette::Active, QPalette::WindowText, colour);
        QApplication::setPalette(palette);
        const QImage image = icon.pixmap(48).toImage().convertToFormat(QImage::Format_ARGB32);
        int opaque = 0;
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
            opaque += pixel.alpha() == 255 ? 1 : 0;
            EXPECT_TRUE(pixel.alpha() < 255 || pixel.rgb() == colour.rgb());
        }
        EXPECT_GT(opaque, 20);
    }
    QApplication::setPalette(before);
}

// The events of the wait come from a timer, so this test alone takes some real milliseconds.
TEST(ClearStyle, HintsCanBeReadOnLightAndDarkGrounds) {
    const std::pair<QColor, QColor> palettes[] = {{Qt::black, Qt::white},
                                                  {QColor(252, 252, 252), QColor(42, 46, 50)}};
    // As the web's guidelines reckon it; 4.5 is what they want of small texts.
    const auto light = [](const QColor& colour) {
        const auto linear = [](float part) {
            return part <= 0.04F ? part / 12.92F : std::pow((part + 0.055F) / 1.055F, 2.4F);
        };
        return 0.2126F * linear(colour.redF()) + 0.7152F * linear(colour.greenF()) +
               0.0722F * linear(colour.blueF());
    };
    for (const auto& [text, ground] : palettes) {
        QPalette palette;
        palette.setColor(QPalette::WindowText, text);
        palette.setColor(QPalette::Window, ground);
        palette.setColor(QPalette::PlaceholderText, Qt::black);
        ClearStyle().polish(palette);
        QImage pixel(1, 1, QImage::Format_ARGB32);
        pixel.fill(ground);
        QPainter(&pixel).fillRect(pixel.rect(), palette.color(QPalette::PlaceholderText));
        const auto [dark, bright] = std::minmax({light(pixel.pixelColor(0, 0)), light(ground)});
        EXPECT_GT((bright + 0.05F) / (dark + 0.05F), 4.5F);
        EXPECT_NE(pixel.pixelColor(0, 0), text);
    }
}

TEST(DesktopClock, ServesEventsAndNeverReturnsEarly) {
    DesktopClock desktop;
    for (const int wait : {0, 300, 1000, 1500, 4200}) {
        int served = 0;
        QMetaObject::invokeMethod(
            qApp, [&] { ++served; }, Qt::QueuedConnection);
        // Short waits share the serving: a row of them, as a session makes it, is as good as one.
        const auto end = theClock().now() + Clock::Microseconds(wait == 0 ? 0 : 6000);
        do {
            const auto deadline = theClock().now() + Clock::Microseconds(wait);
            theClock().waitUntil(deadline);
            EXPECT_GE(theClock().now(), deadline);
        } while (theClock().now() < end);
        EXPECT_EQ(served, 1);
    }
    // A wait inside an event of a wait keeps neither from its end.
    bool innerEnded = false;
    const auto inner = [&] {
        const auto deadline = theClock().now() + Clock::Microseconds(7000);
        theClock().waitUntil(deadline);
        innerEnded = theClock().now() >= deadline;
    };
    QMetaObject::invokeMethod(qApp, inner, Qt::QueuedConnection);
    const auto deadline = theClock().now() + Clock::Microseconds(5000);
    theClock().waitUntil(deadline);
    EXPECT_TRUE(innerEnded);
    EXPECT_GE(theClock().now(), deadline);
}

class ShowErr : public test::Desktop {
  protected:
    static void fail(const char* label) {
        guarded(label, [] { throw RuntimeError(errNum::subscript, "array"); });
    }
    static std::string line(int row) {
        return modShowErr::state().listShowErr.lines()[static_cast<std::size_t>(row)];
    }
};

TEST_F(ShowErr, ShowsWhatFailedBeforeAndAfterItWasMade) {
    start();
    {
        const frmShowErr early;
        for (const bool empty : {true, false}) {
            EXPECT_EQ(find<QLabel>(early, "lblEmpty").isVisibleTo(&early), empty);
            EXPECT_EQ(find<QPushButton>(early, "cmdCopyAll").isEnabled(), !empty);
            fail("early->one");
        }
        EXPECT_FALSE(early.isVisible());
    }
    const frmShowErr window;
    const auto& list = find<QListView>(window, "listShowErr");
    EXPECT_EQ(list.currentIndex().row(), 3);
    fail("late->two");
    EXPECT_TRUE(list.selectionModel()->isRowSelected(5));
    for (int row = 0; row < 6; ++row) {
        EXPECT_EQ(stdText(list.model()->index(row, 0).data().toString()), line(row));
    }
}

TEST_F(ShowErr, OpensAtTheLastOfManyLines) {
    start();
    frmShowErr window;
    window.resize(300, 150);
    for (int i = 0; i < 100; ++i) {
        fail("start->up");
    }
    window.show();
    QApplication::processEvents();
    const auto& list = find<QListView>(window, "listShowErr");
    EXPECT_TRUE(list.viewport()->rect().intersects(list.visualRect(list.model()->index(199, 0))));
}

TEST_F(ShowErr, CopiesTheSelectedLinesOrAll) {
    start();
    frmShowErr window;
    fail("a->0");
    fail("b->2");
    auto& list = find<QListView>(window, "listShowErr");
    list.setFocus();
    ASSERT_TRUE(showActive(window));
    const auto copied = [&](bool byKey) {
        QApplication::clipboard()->clear();
        if (byKey) {
            QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
        } else {
            find<QPushButton>(window, "cmdCopyAll").click();
        }
        return stdText(QApplication::clipboard()->text());
    };
    const std::string all = fmt::format("{}\n{}\n{}\n{}", line(0), line(1), line(2), line(3));
    // Line 3 is selected already: what comes later in the selection still comes in its place.
    list.selectionModel()->select(list.model()->index(1, 0), QItemSelectionModel::Select);
    EXPECT_EQ(copied(true), line(1) + "\n" + line(3));
    EXPECT_EQ(copied(false), all);
    list.clearSelection();
    EXPECT_EQ(copied(true), all);
}

TEST_F(ShowErr, ALongLineScrollsAndIsItsOwnTip) {
    start();
    frmShowErr window;
    window.resize(300, 150);
    window.show();
    fail("module<b>->procedure");
    auto& list = find<QListView>(window, "listShowErr");
    QApplication::processEvents();
    EXPECT_GT(list.horizontalScrollBar()->maximum(), 0);
    const QPoint at = list.visualRect(list.model()->index(1, 0)).center();
    QHelpEvent help(QEvent::ToolTip, at, list.viewport()->mapToGlobal(at));
    QApplication::sendEvent(list.viewport(), &help);
    EXPECT_THAT(stdText(QToolTip::text()),
                AllOf(HasSubstr("module&lt;b&gt;-&gt;"), HasSubstr("数组索引超出范围")));
}

using TreeView = test::Desktop;

TEST_F(TreeView, HasItsNodesInEveryLanguage) {
    for (const auto& [language, texts] :
         {std::pair(1, "Norvik-K520|本机信息|信道信息|整机设置|"),
          {2, "||||"},
          {3, "ZEV-K520|Radio Info|Channel Info|Optional Features|"}}) {
        resetModules();
        start(language);
        frmTreeView window;
        window.InitRadioSet();
        auto& tree = find<QTreeWidget>(window, "treevMain");
        EXPECT_EQ(tree.topLevelItemCount(), 1);
        std::string all;
        for (QTreeWidgetItemIterator node(&tree); *node; ++node) {
            all += stdText((*node)->text(0)) + "|";
            EXPECT_FALSE((*node)->data(0, Qt::AccessibleTextRole).toString().isEmpty());
        }
        EXPECT_EQ(all, texts);
    }
}

TEST_F(TreeView, AClickOrReturnOnAChildAsksForItsWindow) {
    start();
    frmTreeView window;
    window.resize(240, 240);
    window.show();
    std::vector<std::string> wanted;
    QObject::connect(&window, &frmTreeView::windowWanted,
                     [&](const QString& key) { wanted.push_back(stdText(key)); });
    auto& tree = find<QTreeWidget>(window, "treevMain");
    QTreeWidgetItem* root = tree.topLevelItem(0);
    for (auto* item : {root->child(2), root->child(0), root}) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(item).center());
    }
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return, Qt::Key_Down, Qt::Key_Enter}) {
        QTest::keyClick(&tree, key);
    }
    EXPECT_THAT(wanted, ElementsAre("SysSet", "RadioInfo", "RadioInfo", "ChInfo"));
    QObject::connect(&window, &frmTreeView::windowWanted,
                     [] { throw RuntimeError(errNum::subscript, "window"); });
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_THAT(failures(), ElementsAre("frmTreeView->treevMain_NodeClick: 9 window"));
}

}  // namespace
}  // namespace k520
