// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Text.h"

/// Texts of the optional features: the headings of their groups, and what each is for.
namespace k520::texts {

inline constexpr Text groupTransmit{"发射", "Transmit"};
inline constexpr Text groupReceiver{"接收", "Receiver"};
inline constexpr Text groupVoice{"语音与提示音", "Voice and tones"};
inline constexpr Text groupPower{"电源", "Power"};
inline constexpr Text groupVox{"声控（VOX）", "VOX"};
inline constexpr Text groupBroadcast{"收音机", "Broadcast receiver"};
inline constexpr Text tipTot{
    "一次发射超过这个时间即自动停止，避免按键卡住而一直占用信道。",
    "Ends a transmission that lasts longer than this, so that a stuck key does not block "
    "the channel."};
inline constexpr Text tipSquelch{
    "静噪电平：信号多强才能听到。0 为常开，9 只接收强信号。",
    "Squelch level: how strong a signal must be to be heard. 0 is always open, 9 takes "
    "strong signals only."};
inline constexpr Text tipVolume{"扬声器的音量。", "The loudness of the loudspeaker."};
inline constexpr Text tipVoice{
    "用语音报出信道号和设置，可选中文或英文。",
    "The radio says channel numbers and settings, in Chinese or in English."};
inline constexpr Text tipBroadcastSquelch{
    "内置收音机的静噪电平：电台信号多强才能听到。",
    "Squelch level of the built-in broadcast receiver: how strong a station must be to be "
    "heard."};
inline constexpr Text tipBroadcastVolume{"内置收音机的音量。",
                                         "The loudness of the built-in broadcast receiver."};
inline constexpr Text tipBatterySave{
    "没有信号时接收机间歇休眠，以节省电池。第一个字可能听不到。",
    "The receiver sleeps for short times while nothing is received. The first syllable "
    "may be lost."};
inline constexpr Text tipBeep{"每次按键发出提示音。", "A tone at each key."};
inline constexpr Text tipEmergencyAlarm{"可以使用对讲机的紧急报警功能。",
                                        "The emergency alarm of the radio can be used."};
inline constexpr Text tipVoiceChip{
    "对讲机内部的语音芯片。它反映硬件，不会写入对讲机。",
    "The voice chip that is built into the radio. It describes the hardware and is never "
    "written to the radio."};
inline constexpr Text tipCrystal{
    "对讲机内部晶体的频率。它反映硬件，不会写入对讲机。",
    "The frequency of the crystal that is built into the radio. It describes the hardware "
    "and is never written to the radio."};
inline constexpr Text tipPreTot{
    "在超时定时器停止发射之前若干秒，用提示音警告。",
    "So many seconds before the time-out timer ends a transmission, the radio warns with "
    "a tone."};
inline constexpr Text tipVoxLevel{
    "声控：讲话即发射。级别越高，越轻的声音也能启动发射。",
    "Voice control: speaking starts a transmission. A higher level reacts to a softer "
    "voice."};
inline constexpr Text tipVoxDelay{
    "声控：讲话停止后继续发射的时间，单位为秒。",
    "Voice control: for how many seconds the radio goes on transmitting after the last "
    "word."};
inline constexpr Text tipVoxInhibitRx{
    "开：对讲机正在接收时，讲话不会启动发射。",
    "On: the voice does not start a transmission while the radio receives."};
inline constexpr Text tipLowBatteryTx{"电池电量低时仍可发射。",
                                      "The radio also transmits when its battery is low."};

}  // namespace k520::texts
