// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Signal.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace k520 {
namespace {

TEST(Signal, TellsAllForAsLongAsTheyListen) {
    Signal<char> signal;
    std::string told;
    const auto first = signal.subscribe([&](char what) { told += what; });
    {
        const auto second = signal.subscribe([&](char what) { told += std::string("2") + what; });
        signal.tell('a');
    }
    signal.tell('b');
    EXPECT_EQ(told, "a2ab");
    const Signal<char> copy = signal;
    EXPECT_FALSE(copy.hasSubscribers());
    signal = Signal<char>();
    EXPECT_TRUE(signal.hasSubscribers());
}

TEST(Signal, OneThatIsToldMayEndOrBeginOthers) {
    Signal<> signal;
    std::string told;
    std::optional<Subscription> self;
    std::optional<Subscription> next;
    Subscription late;
    self = signal.subscribe([&] {
        told += "s";
        self.reset();
        next.reset();
        late = signal.subscribe([&] { told += "l"; });
    });
    next = signal.subscribe([&] { told += "n"; });
    signal.tell();
    EXPECT_EQ(told.substr(0, 1) + std::to_string(told.find('n')),
              "s" + std::to_string(std::string::npos));
    told.clear();
    signal.tell();
    EXPECT_EQ(told, "l");
}

TEST(Signal, ASubscriptionMayOutliveItsSignal) {
    Subscription subscription;
    {
        Signal<> signal;
        subscription = signal.subscribe([] {});
    }
    subscription = {};
}

}  // namespace
}  // namespace k520
