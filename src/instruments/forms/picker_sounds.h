#pragma once

#include "base/text.h"
#include <QAbstractTableModel>

#include "instruments/picker/voice_picker.h"

namespace tracksmith::forms {

/// The voices that a picker shows, for an item view: star, name, bank MSB and LSB, program. Reads
/// them from the picker when they are painted, so that thousands cost no more than those seen.
class PickerSounds : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Star, Name, Msb, Lsb, Program, Columns };
    /// Beside Qt's own: what stands behind the name, dimmed; the channels of the song that play the
    /// voice, counted from 1 and joined by commas; whether it is a favourite.
    enum Role { RemarkRole = Qt::UserRole, ChannelsRole, FavouriteRole };

    /// `picker` must outlive the model.
    PickerSounds(const instruments::VoicePicker& picker, Language language, QObject* parent);

    /// The picker's voices are others, or in another order.
    void Renew();
    /// The favourites have changed.
    void RenewStars();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString Cell(const instruments::Voice& voice, int column) const;
    QString Remark(const instruments::SoundRow& row) const;
    QString Channels(const instruments::Voice& voice) const;

    const instruments::VoicePicker& picker_;
    Language language_;
    int rows_ = 0;
};

} // namespace tracksmith::forms
