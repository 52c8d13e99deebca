#include "editing/forms/carried_words.h"

#include <array>
#include <cstddef>
#include <span>

#include "base/forms/qt_text.h"

#include "editing/forms/texts.h"
#include "song/control_names.h"
#include "song/midi_numbers.h"

namespace tracksmith::forms {
namespace {

constexpr std::uint8_t kDataMsb = 6;
constexpr std::uint8_t kDataLsb = 38;
constexpr std::uint8_t kNrpnLsb = 98;
constexpr std::uint8_t kNrpnMsb = 99;
constexpr std::uint8_t kRpnLsb = 100;
constexpr std::uint8_t kRpnMsb = 101;
constexpr std::uint8_t kNoParameter = 127;

/// The settings of one channel, message after message.
class ChannelWords {
public:
    void Take(const editing::CarriedMessage& message, const VoiceByNumbers& nameVoice,
              Language language) {
        const auto put = [&](std::uint16_t control, int value) {
            Put(ToQString(song::ControlName(control, language)) + u' ' + QString::number(value));
        };
        switch (message.status & 0xF0U) {
            case song::kProgramChange:
                PutVoice(message, nameVoice, language);
                break;
            case song::kControlChange:
                if (!TakeParameter(message, language)) {
                    put(message.data1, message.data2);
                }
                break;
            case song::kPitchBend:
                put(song::kBendControl, message.data1 + message.data2 * 128 - 8192);
                break;
            case song::kChannelPressure:
                put(song::kPressureControl, message.data1);
                break;
            default:
                Put(InLanguage(range_texts::kKeyPressure, language));
        }
    }

    const QStringList& Words() const { return words_; }

private:
    void Put(const QString& words) {
        if (!words_.contains(words)) {
            words_ << words;
        }
    }

    void PutVoice(const editing::CarriedMessage& message, const VoiceByNumbers& nameVoice,
                  Language language) {
        const auto channel = static_cast<std::uint8_t>(message.status & 0x0FU);
        const QString name =
            nameVoice ? ToQString(nameVoice(channel, msb_, lsb_, message.data1)) : QString();
        Put(name.isEmpty() ? InLanguage(range_texts::kProgram, language).arg(message.data1 + 1)
                           : name);
    }

    // Banks belong to their program, and the numbers of a parameter to its value.
    bool TakeParameter(const editing::CarriedMessage& message, Language language) {
        switch (message.data1) {
            case song::kBankMsb:
                msb_ = message.data2;
                return true;
            case song::kBankLsb:
                lsb_ = message.data2;
                return true;
            case kRpnMsb:
            case kNrpnMsb:
                registered_ = message.data1 == kRpnMsb;
                parameter_[0] = message.data2;
                return true;
            case kRpnLsb:
            case kNrpnLsb:
                registered_ = message.data1 == kRpnLsb;
                parameter_[1] = message.data2;
                return true;
            case kDataMsb:
                PutParameter(message.data2, language);
                return true;
            default:
                return message.data1 == kDataLsb; // the finer part of the value
        }
    }

    void PutParameter(std::uint8_t value, Language language) {
        if (parameter_[0] == kNoParameter && parameter_[1] == kNoParameter) {
            return;
        }
        const bool bendRange = registered_ && parameter_[0] == 0 && parameter_[1] == 0;
        Put(bendRange ? InLanguage(range_texts::kBendRange, language).arg(value)
                      : InLanguage(range_texts::kParameter, language)
                            .arg(parameter_[0])
                            .arg(parameter_[1])
                            .arg(value));
    }

    QStringList words_;
    std::optional<std::uint8_t> msb_;
    std::optional<std::uint8_t> lsb_;
    std::array<std::uint8_t, 2> parameter_{kNoParameter, kNoParameter};
    bool registered_ = true;
};

QString MetaWords(const editing::CarriedMeta& meta, Language language) {
    constexpr double kMinute = 60'000'000;
    const std::span<const std::uint8_t> bytes = meta.bytes;
    if (meta.type == song::kMetaTempo && bytes.size() >= 3) {
        const int microseconds = (bytes[0] << 16) | (bytes[1] << 8) | bytes[2];
        const double bpm = kMinute / (microseconds > 0 ? microseconds : 500'000);
        return InLanguage(range_texts::kTempoSetting, language).arg(bpm, 0, 'g', 5);
    }
    if (meta.type == song::kMetaTimeSignature && bytes.size() >= 2) {
        return InLanguage(range_texts::kMetreSetting, language)
            .arg(bytes[0])
            .arg(std::uint64_t{1} << (bytes[1] & 0x1FU));
    }
    return InLanguage(range_texts::kKeySetting, language);
}

} // namespace

QStringList CarriedWords(const editing::CarriedState& carried, const VoiceByNumbers& nameVoice,
                         Language language) {
    QStringList words;
    for (const editing::CarriedMeta& meta : carried.metas) {
        words << MetaWords(meta, language);
    }
    std::array<ChannelWords, song::kMidiChannels> channels;
    for (const auto* messages : {&carried.messages, &carried.behind}) {
        for (const editing::CarriedMessage& message : *messages) {
            channels.at(message.status & 0x0FU).Take(message, nameVoice, language);
        }
    }
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        if (const QStringList& settings = channels.at(channel).Words(); !settings.isEmpty()) {
            words << InLanguage(range_texts::kChannelSettings, language)
                         .arg(channel + 1)
                         .arg(settings.join(QStringLiteral(", ")));
        }
    }
    words.removeDuplicates();
    return words;
}

} // namespace tracksmith::forms
