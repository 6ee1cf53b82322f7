// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/simulator/virtualPort.h"

#include <string>
#include <utility>

#include "base/Clock.h"
#include "base/RuntimeError.h"
#include "link/port/portTexts.h"

namespace k520 {

namespace {

[[noreturn]] void refuse(std::int16_t number, const std::string& why) {
    throw RuntimeError(number, VirtualPort::name, why);
}

}  // namespace

VirtualPort::VirtualPort(std::shared_ptr<SimRadio> radio) : radio_(std::move(radio)) {}

VirtualPort::~VirtualPort() {
    VirtualPort::close();
}

void VirtualPort::open() {
    const auto now = theClock().now();
    if (radio_->gone(now)) {
        refuse(errNum::fileNotFound, say(texts::noSuchDevice));
    }
    if (!radio_->takeCable()) {
        refuse(errNum::alreadyOpen, say(texts::inUseBy, say(texts::thisProgram)));
    }
    open_ = true;
    // What came while nobody listened is lost, as on a real port.
    static_cast<void>(radio_->takeDue(now));
    received_.clear();
}

void VirtualPort::close() {
    if (std::exchange(open_, false)) {
        radio_->releaseCable();
    }
}

void VirtualPort::emptyInput() {
    takeArrived();
    received_.clear();
}

void VirtualPort::emptyOutput() {
    takeArrived();
}

void VirtualPort::write(std::span<const std::uint8_t> bytes) {
    takeArrived();
    radio_->receive(bytes, theClock().now());
}

std::size_t VirtualPort::waiting() {
    takeArrived();
    return received_.size();
}

std::vector<std::uint8_t> VirtualPort::readAll() {
    takeArrived();
    return std::exchange(received_, {});
}

void VirtualPort::takeArrived() {
    if (!open_) {
        refuse(errNum::badFileName, say(texts::portNotOpen));
    }
    const auto now = theClock().now();
    if (radio_->gone(now)) {
        refuse(errNum::deviceIo, say(texts::portGone));
    }
    const auto bytes = radio_->takeDue(now);
    received_.insert(received_.end(), bytes.begin(), bytes.end());
}

}  // namespace k520
