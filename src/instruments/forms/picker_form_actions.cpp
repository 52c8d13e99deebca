#include "base/forms/qt_text.h"
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableView>
#include <QTimer>

#include "instruments/forms/picker_form.h"
#include "instruments/forms/picker_groups.h"
#include "instruments/forms/picker_sound_delegate.h"
#include "instruments/forms/picker_sounds.h"
#include "instruments/forms/picker_texts.h"
#include "instruments/forms/picker_voice_card.h"
#include "instruments/voices/texts.h"

// What the window in which a voice is picked does, and what it shows.

namespace tracksmith::forms {
namespace {

using instruments::FamilyKind;
using instruments::FamilyRow;
using instruments::NamedVoice;
using instruments::VoiceMatch;
using instruments::VoiceNumbers;

QString NumbersOf(VoiceNumbers numbers) {
    return QStringLiteral("%1 · %2 · %3")
        .arg(numbers.msb)
        .arg(numbers.lsb)
        .arg(numbers.program + 1);
}

PickerVoiceCard::Content ContentOf(const QString& caption, VoiceNumbers numbers,
                                   const NamedVoice& voice, Language language) {
    PickerVoiceCard::Content content{caption, ToQString(voice.name), NumbersOf(numbers), {}, {}};
    if (voice.match == VoiceMatch::Similar) {
        content.mark = InLanguage(picker_texts::kSimilar, language);
        content.remark =
            ToQString(instruments::texts::WhySimilar(numbers, voice.numbers, language));
    } else {
        content.remark = InLanguage(
            voice.match == VoiceMatch::Exact ? picker_texts::kExact : picker_texts::kUnknownVoice,
            language);
    }
    return content;
}

} // namespace

QString TPickerForm::NameOfFamily(const FamilyRow& row) const {
    switch (row.kind) {
        case FamilyKind::Favourites:
            return Say(picker_texts::kFavourites);
        case FamilyKind::LastUsed:
            return Say(picker_texts::kLastUsed);
        case FamilyKind::AllOwn:
            return Say(picker_texts::kAllOwn);
        default:
            return ToQString(row.name);
    }
}

void TPickerForm::ShowFamilies() {
    const instruments::PickerLists& lists = picker_.Lists();
    families_->Clear();
    families_->AddHeading(Say(picker_texts::kYours));
    FamilyKind former = FamilyKind::LastUsed;
    for (const FamilyRow& row : lists.Families()) {
        if (row.kind == FamilyKind::AllOwn && former != FamilyKind::AllOwn) {
            families_->AddHeading(
                Say(picker_texts::kOwn)
                    .arg(NumberText(static_cast<std::int64_t>(lists.OwnCount()), language_)));
        } else if (row.kind == FamilyKind::Inherited && former != FamilyKind::Inherited) {
            families_->AddHeading(
                Say(picker_texts::kInherited)
                    .arg(NumberText(static_cast<std::int64_t>(lists.InheritedCount()), language_)));
        }
        former = row.kind;
        families_->AddGroup(NameOfFamily(row), QString::number(row.hits), row.hits == 0);
    }
    families_->Choose(lists.Family());
    hits_->setText(Say(picker_texts::kHits)
                       .arg(NumberText(static_cast<std::int64_t>(lists.Hits()), language_)));
}

void TPickerForm::ShowCategories() {
    const instruments::PickerLists& lists = picker_.Lists();
    const QString family = NameOfFamily(lists.Families().at(lists.Family()));
    categories_->Clear();
    bool headed = false;
    for (const instruments::CategoryRow& row : lists.Categories()) {
        if (row.hits == 0 && !row.name.empty() && !headed) {
            categories_->AddHeading(Say(picker_texts::kNoMatch));
            headed = true;
        }
        categories_->AddGroup(
            row.name.empty() ? Say(picker_texts::kAllOf).arg(family) : ToQString(row.name),
            QString::number(row.hits), row.hits == 0);
    }
    categories_->Choose(lists.Category());
}

void TPickerForm::ShowSounds() {
    const QSignalBlocker silent(table_->selectionModel());
    sounds_->Renew();
    const bool nothing = picker_.Lists().Sounds().empty();
    nothing_->setVisible(nothing);
    ShowChosenRow();
}

// The row of the voice selected, if it is among those shown; nothing sounds.
void TPickerForm::ShowChosenRow() {
    const instruments::PickerLists& lists = picker_.Lists();
    const std::size_t row = lists.RowOf({picker_.SelectedIsKit(), picker_.Selected()});
    const QSignalBlocker silent(table_->selectionModel());
    if (row < lists.Sounds().size()) {
        table_->selectRow(static_cast<int>(row));
        table_->scrollTo(sounds_->index(static_cast<int>(row), 0),
                         QAbstractItemView::PositionAtCenter);
    } else {
        table_->clearSelection();
    }
}

void TPickerForm::ShowVoices() {
    const bool old = picker_.HearsOldVoice();
    const QString oldCaption = Say(picker_texts::kOldVoice);
    const QString newCaption = Say(picker_texts::kNewVoice);
    const QString heard = Say(picker_texts::kHeardNow);
    oldVoice_->Show(ContentOf(old ? heard.arg(oldCaption) : oldCaption, picker_.InForce(),
                              picker_.OldVoice(language_), language_));
    newVoice_->Show(ContentOf(picker_.IsTrying() && !old ? heard.arg(newCaption) : newCaption,
                              picker_.Selected(), picker_.NewVoice(language_), language_));
    old_->setChecked(old);
    new_->setChecked(picker_.IsTrying() && !old);
}

void TPickerForm::ShowPlaying() {
    play_->setText(Say(program_.playing() ? picker_texts::kStop : picker_texts::kPlay));
}

void TPickerForm::Search(const QString& words) {
    picker_.E_SelectSoundNameChangeTracking(words.toStdString());
    delegate_->SetSearch(words);
    ShowFamilies();
    ShowCategories();
    ShowSounds();
}

void TPickerForm::ChooseSound(int row) {
    if (row < 0) {
        return;
    }
    picker_.LB_SoundsClick(static_cast<std::size_t>(row));
    ShowVoices();
    if (picker_.NextNoteMs() > 0) {
        noteTimer_->start(picker_.NextNoteMs());
    }
}

void TPickerForm::StepTestNote() {
    if (picker_.NextNoteMs() > 0) {
        picker_.PlayANoteTimerTimer();
    }
    if (const int next = picker_.NextNoteMs(); next > 0) {
        noteTimer_->start(next);
    }
}

void TPickerForm::ToggleFavourite() {
    const bool known = picker_.NewVoice(language_).match == VoiceMatch::Exact;
    if (!known || !picker_.ToggleFavourite()) {
        hits_->setText(Say(known ? picker_texts::kNotStored : picker_texts::kUnknownVoice));
        return;
    }
    ShowFamilies();
    sounds_->RenewStars();
    if (picker_.Lists().Families().at(picker_.Lists().Family()).kind == FamilyKind::Favourites) {
        ShowCategories();
        ShowSounds();
    }
}

void TPickerForm::SaveToRevoicer() {
    hits_->setText(Say(picker_.Btn_SaveToRevoicerClick(language_) ? picker_texts::kInRevoicer
                                                                  : picker_texts::kNotInRevoicer));
}

void TPickerForm::SwitchOldNew() {
    if (picker_.HearsOldVoice()) {
        picker_.Btn_NewVoiceClick();
    } else {
        picker_.Btn_OldVoiceClick();
    }
    ShowVoices();
}

// Down and Up go from the search line to the voices; Enter accepts from either.
bool TPickerForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == search_ && event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_D) {
        return true; // on some desktops Ctrl+D deletes in a line of text
    }
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool moves = key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown ||
                       key == Qt::Key_PageUp;
    if (watched == search_ && moves) {
        if (!table_->currentIndex().isValid() && sounds_->rowCount() > 0) {
            table_->selectRow(0);
        } else {
            QCoreApplication::sendEvent(table_, event);
        }
        return true;
    }
    if (watched == table_ && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        accept();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tracksmith::forms
