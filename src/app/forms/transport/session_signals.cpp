#include "app/forms/transport/session_signals.h"

#include "base/system/message_poster.h"
#include <QCoreApplication>

namespace tracksmith::forms {
namespace {

constexpr int kDisplayMs = 33;
constexpr int kPortCheckMs = 500;

} // namespace

SessionSignals::SessionSignals(session::Session& session, QObject* parent)
    : QObject(parent), session_(session) {
    system::SetMessageWakeUp([this] {
        QMetaObject::invokeMethod(this, &system::DispatchMessages, Qt::QueuedConnection);
    });
    session_.AddListener(*this);
    connect(&display_, &QTimer::timeout, this, &SessionSignals::PlaceChanged);
    connect(&portCheck_, &QTimer::timeout, this, [this] {
        Controls().CheckPorts();
        emit PortsChecked();
    });
    portCheck_.start(kPortCheckMs);
}

SessionSignals::~SessionSignals() {
    session_.RemoveListener(*this);
    system::SetMessageWakeUp({});
}

void SessionSignals::OnSongChanged(const session::ChangeKind& kind) {
    emit SongChanged(kind.replaces);
    emit PlaceChanged();
}

void SessionSignals::OnPlaying(bool playing) {
    if (playing) {
        display_.start(kDisplayMs);
    } else {
        display_.stop();
    }
    emit PlayingChanged(playing);
}

} // namespace tracksmith::forms
