// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <cstddef>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/modSoftFace.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/commands.h"
#include "cli/document.h"
#include "cli/output.h"
#include "cli/program.h"
#include "document/channelWords.h"
#include "document/channelWordsTexts.h"
#include "document/picture.h"
#include "settings/optionTable.h"

namespace k520::cli {

namespace {

using document::ChannelPicture;
using document::ParameterPicture;
using document::Picture;
using document::stampText;
using json = nlohmann::ordered_json;

constexpr std::int64_t hertzPerUnit = 10;

json hertz(const std::optional<std::int32_t>& frequency) {
    return frequency ? json(*frequency * hertzPerUnit) : json(nullptr);
}

json parameterJson(const ParameterPicture& parameter) {
    return {{"field", parameter.field},
            {"key", parameter.key},
            {"title", parameter.title},
            {"value", parameter.value},
            {"text", parameter.text}};
}

json channelJson(const ChannelPicture& channel) {
    json result{
        {"channel", channel.channel}, {"rx_hz", hertz(channel.rx)}, {"tx_hz", hertz(channel.tx)}};
    if (!channel.rx) {
        return result;
    }
    result["in_band"] = channel.inBand;
    result["decode_tone"] = channel.decode;
    result["encode_tone"] = channel.encode;
    result["parameters"] = json::array();
    for (const auto& parameter : channel.parameters) {
        result["parameters"].push_back(parameterJson(parameter));
    }
    return result;
}

json optionsJson(const Picture& picture) {
    json options = json::object();
    for (const auto& option : optionTable::options()) {
        const auto value = picture.options[static_cast<std::size_t>(option.number)];
        options[std::string(option.name)] = {{"number", option.number},
                                             {"value", value},
                                             {"text", optionTable::valueText(option, value)}};
    }
    return options;
}

json pictureJson(const Picture& picture, const std::string& file) {
    json channels = json::array();
    for (const auto& channel : picture.channels) {
        channels.push_back(channelJson(channel));
    }
    return {{"file", file},
            {"image_size", picture.image.size()},
            {"model",
             {{"index", picture.model},
              {"name", picture.modelName ? json(*picture.modelName) : json(nullptr)}}},
            {"band",
             {{"index", picture.band.index},
              {"name", picture.band.name},
              {"low_hz", picture.band.low * hertzPerUnit},
              {"high_hz", picture.band.high * hertzPerUnit}}},
            {"stamp", picture.stamp ? json(stampText(picture.stamp)) : json(nullptr)},
            {"channels", channels},
            {"options", optionsJson(picture)}};
}

/// A caption of the window; `fallback` in a language without captions.
std::string caption(SoftText index, const Text& fallback) {
    const auto& text = modSoftFace::text(index);
    return text.empty() ? say(fallback) : text;
}

std::string headText(const Picture& picture) {
    const auto stamp = stampText(picture.stamp);
    const std::vector<std::pair<std::string, std::string>> lines{
        {caption(SoftText::radioModel, texts::modelTitle),
         picture.modelName.value_or(fmt::format("{} ?", picture.model))},
        {caption(SoftText::radioBand, texts::bandTitle), picture.band.name},
        {caption(SoftText::radioLastWrite, texts::stampTitle),
         stamp.empty() ? caption(SoftText::unknownTime, texts::noStamp) : stamp}};
    std::size_t width = 0;
    for (const auto& line : lines) {
        width = std::max(width, displayWidth(line.first));
    }
    std::string head;
    for (const auto& [name, value] : lines) {
        head += paddedRight(name, width + 2) + value + '\n';
    }
    return head;
}

std::vector<Column> channelColumns() {
    const auto& grid = modChMem::state().vsfgGridCh;
    std::vector<Column> columns;
    for (int col = 0; col <= modChMem::state().ColNum; ++col) {
        if (col == modChMem::column::reserved) {
            continue;
        }
        columns.push_back({grid.text(0, col), col <= modChMem::column::tx});
    }
    return columns;
}

std::string alignedMhz(const std::optional<std::int32_t>& frequency) {
    return frequency ? frequency::fixedMhzText(*frequency) : std::string();
}

std::vector<std::string> channelRow(const ChannelPicture& channel) {
    if (!channel.rx) {
        return {fmt::format("{}", channel.channel)};
    }
    std::vector<std::string> row{fmt::format("{}", channel.channel), alignedMhz(channel.rx),
                                 alignedMhz(channel.tx), channel.decode,
                                 channel.tx ? channel.encode : std::string()};
    for (const auto& parameter : channel.parameters) {
        row.push_back(parameter.text);
    }
    return row;
}

std::string channelsText(const Picture& picture) {
    std::vector<std::vector<std::string>> rows;
    std::vector<std::size_t> outside;
    std::string names;
    for (const auto& channel : picture.channels) {
        if (channel.rx && !channel.inBand) {
            outside.push_back(rows.size());
            names += fmt::format("{}{}", names.empty() ? "" : " ", channel.channel);
        }
        rows.push_back(channelRow(channel));
    }
    auto text = formatTable(channelColumns(), rows, outside);
    return outside.empty() ? text : text + flagged(say(texts::outsideBand) + names) + '\n';
}

/// A line for each channel that is not empty.
std::string wordsText(const Picture& picture) {
    std::string text;
    for (const auto& channel : picture.channels) {
        if (const auto words = channelWords::of(channel); !words.empty()) {
            text += say(texts::wordsOfRow, channel.channel, words) + '\n';
        }
    }
    return text;
}

std::string optionsText(const Picture& picture) {
    std::vector<std::vector<std::string>> rows;
    for (const auto& option : optionTable::options()) {
        const auto value = picture.options[static_cast<std::size_t>(option.number)];
        const auto& text = optionTable::captionText(option);
        rows.push_back({text.empty() ? std::string(option.name) : text,
                        optionTable::valueText(option, value),
                        fmt::format("option.{}", option.name)});
    }
    return formatTable(
        {{caption(SoftText::optionFrame, texts::optionalFeatures)}, {""}, {say(texts::keyTitle)}},
        rows);
}

}  // namespace

int runShow(const Arguments& arguments) {
    const auto& file = arguments.at("FILE");
    startConfiguration(DefaultImage::helpful, readerOf(arguments));
    openDocument(file, ShortFile::warn);
    const Picture picture = document::currentPicture();
    if (arguments.has("json")) {
        // Bytes that are not UTF-8 can only come from the file's name or the settings.
        print(pictureJson(picture, file)
                  .dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
        print("\n");
        return exitDone;
    }
    if (arguments.has("words")) {
        print(wordsText(picture));
        return exitDone;
    }
    print(bold(file) + '\n' + headText(picture) + '\n' + channelsText(picture) + '\n' +
          optionsText(picture));
    return exitDone;
}

}  // namespace k520::cli
