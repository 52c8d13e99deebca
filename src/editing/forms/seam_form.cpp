#include "editing/forms/seam_form.h"

#include <vector>

#include "base/forms/theme.h"
#include <QHBoxLayout>

#include "editing/forms/carried_words.h"
#include "editing/forms/range_colours.h"
#include "editing/forms/seam_view.h"
#include "editing/forms/texts.h"

namespace tracksmith::forms {
namespace {

/// What has room; the hint has the others.
constexpr qsizetype kMostNames = 4;

} // namespace

void SeamForm::BuildDetails(QHBoxLayout& row) {
    seam_ = new SeamView(Actions().voiceName, this);
    seam_->setAccessibleName(Say(range_texts::kSeamHint));
    seam_->setToolTip(Say(range_texts::kSeamHint));
    row.addWidget(seam_, 1);
}

editing::SeamSpan SeamForm::HeardSpan(const editing::Foresight& foresight) const {
    return editing::SpanAround(*foresight.after,
                               editing::SeamTick(Tool(), foresight.reading.range, AtEnd()));
}

Text SeamForm::PreviewText() const {
    return range_texts::kPreviewSeam;
}

void SeamForm::ShowHeardPlace(std::int32_t tick) {
    seam_->ShowPlace(tick);
}

void SeamForm::ShowSeam(const editing::Foresight& foresight, const QString& note,
                        const QColor& colour) {
    seam_->ShowSeam(editing::PictureSeam(Owner().Song(), *foresight.after, Tool(),
                                         foresight.reading.range, AtEnd()),
                    *foresight.after, note, colour);
}

void SeamForm::ShowFigures(const editing::Foresight& foresight, const FigureLines::Line& notes,
                           const FigureLines::Line& messages) {
    const Language language = CurrentLanguage();
    const QPalette& colours = palette();
    std::vector<FigureLines::Line> lines{
        notes,
        {AmberColour(colours), range_texts::NotesEnd(foresight.seams.closed, language)},
        {GreenColour(colours), range_texts::NotesBegin(foresight.seams.begunAgain, language)},
        {Accent(colours), range_texts::SettingsCarried(foresight.seams.carried, language)}};
    if (foresight.figures.instrumentMessages + foresight.figures.drumMessages > 0) {
        lines.push_back(messages);
    }
    const QStringList names = CarriedWords(foresight.seams.settings, Actions().nameVoice, language);
    QString shown = names.mid(0, kMostNames).join(QStringLiteral("; "));
    if (names.size() > kMostNames) {
        shown += QStringLiteral(" …");
    }
    Figures().Show(Say(range_texts::kAtSeam), lines, {{}, shown, {}});
    Figures().setToolTip(names.join(u'\n'));
}

void SeamForm::ClearSeam() {
    seam_->Clear();
    Figures().Show(Say(range_texts::kAtSeam), {});
    Figures().setToolTip({});
}

} // namespace tracksmith::forms
