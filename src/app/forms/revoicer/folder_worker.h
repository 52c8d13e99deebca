#pragma once

#include <future>
#include <memory>
#include <optional>

#include "base/text.h"
#include <QObject>
#include <QTimer>

#include "app/revoice_folder.h"

namespace tracksmith::forms {

/// Revoices a folder on a thread of its own. User-interface thread.
class FolderWorker : public QObject {
    Q_OBJECT

public:
    explicit FolderWorker(QObject* parent = nullptr);
    /// Ends after the song that is worked on.
    ~FolderWorker() override;

    /// Looks for the songs; `Found` is told then. `tables` must outlive the worker.
    void Find(app::FolderOrder order, const instruments::VoiceTables& tables, Language language);
    /// Revoices what was found; `Done` is told at the end. See FolderRevoicing::Run.
    void Run(bool replace);
    /// Ends after the song that is worked on; where nothing runs, what was found is dropped.
    void Cancel();

    /// Between Find and the end.
    bool Busy() const { return work_ != nullptr; }
    std::size_t Songs() const { return songs_; }

signals:
    void Found(std::size_t songs, std::size_t existing);
    void Progressed(std::size_t done);
    /// Nothing where memory did not suffice.
    void Done(const std::optional<app::FolderResult>& result);

private:
    void Look();
    void End(const std::optional<app::FolderResult>& result);

    std::unique_ptr<app::FolderRevoicing> work_;
    std::future<void> finding_;
    std::future<app::FolderResult> running_;
    std::size_t songs_ = 0;
    QTimer timer_;
};

} // namespace tracksmith::forms
