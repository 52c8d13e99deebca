#pragma once

#include <future>
#include <memory>
#include <optional>
#include <string>

#include "base/text.h"
#include <QObject>
#include <QTimer>

#include "app/diff/compare_files.h"
#include "app/session/other_song.h"

namespace tracksmith::forms {

/// What comparing two states of a song has come to.
struct ComparedSongs {
    diff::Differences differences;
    song::TimeMap beforeMap;
    song::TimeMap afterMap;
    /// The earlier state, to be heard; null where there was a fault.
    std::shared_ptr<session::OtherSong> before;
    /// What went wrong, to be shown; empty for nothing.
    std::string error;
};

/// Compares two files on a thread of its own, so that large songs hold nothing up. User-interface
/// thread.
class BackgroundComparison : public QObject {
    Q_OBJECT

public:
    explicit BackgroundComparison(QObject* parent = nullptr);
    /// Waits for the comparison that runs.
    ~BackgroundComparison() override;

    /// Compares `files`; what is told by Done is always the newest start. Faults are worded in
    /// `language`.
    void Start(diff::FilePair files, Language language);
    /// What was started is not told any more.
    void Drop();

    /// Something was started and has not been told yet.
    bool Busy() const { return wanted_ || waiting_; }

signals:
    void Done(const std::shared_ptr<const ComparedSongs>& result);

private:
    struct Order {
        diff::FilePair files;
        Language language = Language::English;
    };

    void Run(Order order);
    void Look();

    std::future<std::shared_ptr<const ComparedSongs>> running_;
    std::unique_ptr<Order> next_;
    /// The running comparison is still wanted; another one waits for its end.
    bool wanted_ = false;
    bool waiting_ = false;
    QTimer timer_;
};

} // namespace tracksmith::forms
