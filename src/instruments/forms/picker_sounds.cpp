#include "instruments/forms/picker_sounds.h"

#include "base/forms/qt_text.h"

#include "instruments/forms/picker_texts.h"

namespace tracksmith::forms {

using instruments::SoundRow;
using instruments::Voice;

PickerSounds::PickerSounds(const instruments::VoicePicker& picker, Language language,
                           QObject* parent)
    : QAbstractTableModel(parent), picker_(picker), language_(language) {
    Renew();
}

void PickerSounds::Renew() {
    beginResetModel();
    rows_ = static_cast<int>(picker_.Lists().Sounds().size());
    endResetModel();
}

void PickerSounds::RenewStars() {
    if (rows_ > 0) {
        emit dataChanged(index(0, Star), index(rows_ - 1, Star));
    }
}

int PickerSounds::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int PickerSounds::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QString PickerSounds::Cell(const Voice& voice, int column) const {
    switch (column) {
        case Name:
            return ToQString(voice.name);
        case Msb:
            return QString::number(voice.msb);
        case Lsb:
            return QString::number(voice.lsb);
        case Program:
            return QString::number(voice.program + 1);
        default:
            return {};
    }
}

// In a family the category is known unless all of them are shown.
QString PickerSounds::Remark(const SoundRow& row) const {
    QString category = picker_.Lists().Category() == 0 ? ToQString(row.voice->category) : QString();
    if (row.hit != instruments::VoiceHit::Group) {
        return category;
    }
    const QString group = InLanguage(picker_texts::kFoundByGroup, language_);
    return category.isEmpty() ? group : category + QStringLiteral(" · ") + group;
}

QString PickerSounds::Channels(const Voice& voice) const {
    QStringList channels;
    for (const std::size_t channel : picker_.ChannelsWith(voice)) {
        channels << QString::number(channel + 1);
    }
    return channels.join(QStringLiteral(", "));
}

QVariant PickerSounds::data(const QModelIndex& index, int role) const {
    const auto& sounds = picker_.Lists().Sounds();
    if (static_cast<std::size_t>(index.row()) >= sounds.size()) {
        return {};
    }
    const SoundRow& row = sounds[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return Cell(*row.voice, index.column());
        case Qt::TextAlignmentRole:
            return static_cast<int>(Qt::AlignVCenter |
                                    (index.column() >= Msb ? Qt::AlignRight : Qt::AlignLeft));
        case Qt::AccessibleTextRole:
            return index.column() == Star ? InLanguage(row.isFavourite ? picker_texts::kFavourite
                                                                       : picker_texts::kNoFavourite,
                                                       language_)
                                          : Cell(*row.voice, index.column());
        case RemarkRole:
            return Remark(row);
        case ChannelsRole:
            return Channels(*row.voice);
        case FavouriteRole:
            return row.isFavourite;
        default:
            return {};
    }
}

QVariant PickerSounds::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>(Qt::AlignVCenter |
                                (section >= Msb ? Qt::AlignRight : Qt::AlignLeft));
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
        case Name:
            return InLanguage(picker_texts::kName, language_);
        case Msb:
            return InLanguage(picker_texts::kMsb, language_);
        case Lsb:
            return InLanguage(picker_texts::kLsb, language_);
        case Program:
            return InLanguage(picker_texts::kProgram, language_);
        default:
            return {};
    }
}

} // namespace tracksmith::forms
