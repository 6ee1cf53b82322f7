// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/channelWords.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/typedText.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "channels/toneCode.h"
#include "document/channelWordsTexts.h"

namespace k520::channelWords {

namespace {

using document::ChannelPicture;
using document::ParameterPicture;

/// How a column of the settings as shipped is said.
struct Phrase {
    std::string_view key;
    Text words;
    bool always;  ///< also for value 0, which is the usual one
    bool ofSendersOnly;
};
constexpr std::array phrases{Phrase{"Bandwidth", texts::wordsWidth, true, false},
                             Phrase{"Power", texts::wordsPower, true, true},
                             Phrase{"Scan", texts::wordsScanned, false, false},
                             Phrase{"BusyLock", texts::wordsBusyLock, false, true}};

bool isOff(std::string_view tone) {
    return tone.empty() || std::ranges::count(toneCode::allOffTexts(), tone) != 0;
}

std::string toneWords(const std::string& tone) {
    return say(texts::wordsBeforeTone) +
           say(tone.front() == 'D' ? texts::wordsWithCode : texts::wordsWithTone, tone);
}

std::string hearing(const ChannelPicture& channel) {
    return say(texts::wordsHears, frequency::fixedMhzText(*channel.rx)) +
           (isOff(channel.decode) ? say(texts::wordsBeforeTone) + say(texts::wordsAnyTone)
                                  : toneWords(channel.decode));
}

std::string sending(const ChannelPicture& channel) {
    if (!channel.tx) {
        return say(texts::wordsOnlyHears);
    }
    return (channel.tx == channel.rx
                ? say(texts::wordsSendsSame)
                : say(texts::wordsSends, frequency::fixedMhzText(*channel.tx))) +
           (isOff(channel.encode) ? say(texts::wordsBeforeTone) + say(texts::wordsNoTone)
                                  : toneWords(channel.encode));
}

std::string parameterWords(const ParameterPicture& parameter, bool sends) {
    const auto* found = std::ranges::find(phrases, parameter.key, &Phrase::key);
    if (found == phrases.end() || parameter.text.empty() ||
        (!found->always && parameter.value == 0) || (found->ofSendersOnly && !sends)) {
        return {};
    }
    return say(texts::wordsBetween) + say(found->words, lowerAscii(parameter.text));
}

}  // namespace

std::string of(const ChannelPicture& channel) {
    if (!channel.rx) {
        return {};
    }
    std::string words = hearing(channel) + say(texts::wordsBetween) + sending(channel);
    for (const auto& parameter : channel.parameters) {
        words += parameterWords(parameter, channel.tx.has_value());
    }
    return words;
}

std::string ofNumber(int number) {
    if (number < 1 || number > modChMem::state().ChNum || number > modChMem::tableChannels) {
        return {};
    }
    return of(document::channelPicture(number, modChMem::ChInfo()(number), modModel::limits()));
}

}  // namespace k520::channelWords
