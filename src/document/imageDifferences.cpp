// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/imageDifferences.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "document/differenceTexts.h"
#include "document/imageMap.h"
#include "settings/optionTable.h"

namespace k520::imageDifferences {

namespace {

using imageMap::Field;
using imageMap::Owner;

int differingBits(const ByteDifference& difference) {
    return difference.a ^ difference.b;
}

/// Adds what a difference belongs to.
void add(const Field& field, Summary& summary) {
    switch (field.owner) {
        case Owner::channel:
            summary.channels.push_back(field.number);
            break;
        case Owner::option:
            summary.options.push_back(field.number);
            break;
        case Owner::model:
            summary.model = true;
            break;
        case Owner::band:
            summary.band = true;
            break;
        case Owner::stamp:
            break;
    }
}

bool isStamp(const Field& field) {
    return field.owner == Owner::stamp;
}

void makeUnique(std::vector<int>& numbers) {
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/// Ascending numbers, neighbours drawn together: "1-3, 7".
std::string numbersText(const std::vector<int>& numbers) {
    std::vector<std::string> parts;
    for (auto first = numbers.begin(); first != numbers.end();) {
        auto last = first;
        while (std::next(last) != numbers.end() && *std::next(last) == *last + 1) {
            ++last;
        }
        parts.push_back(first == last ? fmt::format("{}", *first)
                                      : fmt::format("{}-{}", *first, *last));
        first = std::next(last);
    }
    return fmt::format("{}", fmt::join(parts, say(texts::numbersBetween)));
}

std::string optionsText(const std::vector<int>& numbers) {
    std::vector<std::string> captions;
    for (const int number : numbers) {
        captions.push_back(optionTable::captionText(optionTable::optionAt(number)));
    }
    return fmt::format("{}", fmt::join(captions, say(texts::numbersBetween)));
}

}  // namespace

std::vector<ByteDifference> find(const MemoryImage& a, const MemoryImage& b,
                                 modIicDat::AddressRange range) {
    const int end = std::min(
        {static_cast<int>(a.size()), static_cast<int>(b.size()), static_cast<int>(range.end) + 1});
    std::vector<ByteDifference> differences;
    for (int address = std::max<int>(range.start, 0); address < end; ++address) {
        if (a(address) != b(address)) {
            differences.push_back({address, a(address), b(address)});
        }
    }
    return differences;
}

std::string ownerText(const ByteDifference& difference) {
    std::vector<std::string> owners;
    for (const auto& field :
         imageMap::at(imageMap::fields(), difference.address, differingBits(difference))) {
        owners.push_back(imageMap::caption(field));
    }
    return fmt::format("{}", fmt::join(owners, ", "));
}

std::string lineText(const ByteDifference& difference) {
    const auto owner = ownerText(difference);
    return fmt::format("{:04X}: {:02X} / {:02X}{}{}", difference.address, difference.a,
                       difference.b, owner.empty() ? "" : "  ", owner);
}

Summary summaryOf(std::span<const ByteDifference> differences) {
    const auto map = imageMap::fields();
    Summary summary;
    for (const auto& difference : differences) {
        const auto owners = imageMap::at(map, difference.address, differingBits(difference));
        if (std::ranges::any_of(owners, isStamp)) {
            continue;
        }
        ++summary.bytes;
        summary.otherBytes += owners.empty() ? 1 : 0;
        for (const auto& field : owners) {
            add(field, summary);
        }
    }
    makeUnique(summary.channels);
    makeUnique(summary.options);
    return summary;
}

std::string summaryText(const Summary& summary) {
    std::vector<std::string> parts;
    if (!summary.channels.empty()) {
        parts.push_back(
            say(summary.channels.size() == 1 ? texts::oneChannelDiffers : texts::channelsDiffer,
                numbersText(summary.channels)));
    }
    if (!summary.options.empty()) {
        parts.push_back(say(texts::optionsDiffer, optionsText(summary.options)));
    }
    if (summary.band) {
        parts.push_back(say(texts::bandDiffers));
    }
    if (summary.model) {
        parts.push_back(say(texts::modelDiffers));
    }
    if (summary.otherBytes > 0) {
        parts.push_back(say(texts::otherBytesDiffer, summary.otherBytes));
    }
    return parts.empty() ? say(texts::nothingDiffers)
                         : fmt::format("{}", fmt::join(parts, say(texts::areasBetween)));
}

}  // namespace k520::imageDifferences
