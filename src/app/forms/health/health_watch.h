#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <QObject>
#include <QTimer>

#include "app/health/check_health.h"
#include "app/session/session.h"

namespace tracksmith::forms {

/// Keeps an eye on what is wrong with the song: checks it anew whenever it is told to, a little at
/// a time between other events of the window, so that large songs hold nothing up. Ordinary songs
/// are done at once. What belongs to a former state of the song is dropped.
class HealthWatch : public QObject {
    Q_OBJECT

public:
    /// What a song is checked against, asked for at each beginning.
    using Options = std::function<health::HealthOptions()>;

    /// `session` must outlive the watch.
    HealthWatch(const session::Session& session, Options options);
    ~HealthWatch() override;

    /// The song or what it is checked against has changed.
    void Begin();

    /// True while the report is about the song as it is.
    bool Ready() const { return ready_; }
    const health::HealthReport& Report() const { return report_; }

signals:
    /// The report is there, or a new check has begun that takes longer.
    void Changed();

private:
    void GoOn();
    void Finish();
    bool Outdated() const { return session_.Revision() != revision_; }

    const session::Session& session_;
    Options options_;
    std::unique_ptr<health::HealthCheck> check_;
    health::HealthReport report_;
    std::uint64_t revision_ = 0;
    bool ready_ = false;
    QTimer timer_;
};

} // namespace tracksmith::forms
