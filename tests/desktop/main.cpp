// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <QApplication>
#include <QStyleFactory>

int main(int count, char** words) {
    testing::InitGoogleTest(&count, words);
    if (GTEST_FLAG_GET(list_tests)) {
        // The build lists the tests, with or without a display.
        return RUN_ALL_TESTS();
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(count, words);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return RUN_ALL_TESTS();
}
