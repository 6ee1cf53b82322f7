// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace k520 {

/// Keeps a subscriber subscribed for as long as it lives. It may outlive the signal.
class Subscription {
  public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<const void> subscriber)
        : subscriber_(std::move(subscriber)) {}
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&&) noexcept = default;
    ~Subscription() = default;

  private:
    std::shared_ptr<const void> subscriber_;
};

/// Something that happens, and those who want to know. Subscribers belong to the signal where they
/// subscribed: a copy has none, and a state that is assigned keeps the ones it has.
template <class... Args>
class Signal {
  public:
    using Subscriber = std::function<void(Args...)>;

    Signal() = default;
    Signal(const Signal& /*other*/) noexcept {}
    Signal& operator=(const Signal& /*other*/) noexcept { return *this; }  // NOLINT
    ~Signal() = default;

    /// Calls `told` each time from now on, while the subscription lives. The order among several
    /// is not fixed.
    [[nodiscard]] Subscription subscribe(Subscriber told) {
        auto subscriber = std::make_shared<const Subscriber>(std::move(told));
        const auto gone =
            std::ranges::find_if(subscribers_, [](const auto& each) { return each.expired(); });
        if (gone != subscribers_.end()) {
            // The places of the others stay: they may be being told just now.
            *gone = subscriber;
        } else {
            subscribers_.push_back(subscriber);
        }
        return Subscription(std::move(subscriber));
    }

    /// A subscriber may end itself or another while it is told, and may subscribe more.
    void tell(Args... args) const {
        for (std::size_t i = 0; i < subscribers_.size(); ++i) {
            if (const auto told = subscribers_[i].lock()) {
                (*told)(args...);
            }
        }
    }

    [[nodiscard]] bool hasSubscribers() const {
        return std::ranges::any_of(subscribers_, [](const auto& each) { return !each.expired(); });
    }

  private:
    std::vector<std::weak_ptr<const Subscriber>> subscribers_;
};

}  // namespace k520
