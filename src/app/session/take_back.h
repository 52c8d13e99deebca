#pragma once

#include <functional>

#include "base/message_host.h"
#include "base/text.h"

#include "app/session/workspace.h"
#include "song/song_snapshot.h"

namespace tracksmith::session {

/// The song as it was before the last change of the whole song, so that the user can go back to it
/// and forth again. One at a time; another song ends it. Owner's thread, while nothing plays.
class TakeBack {
public:
    /// Decodes the song of the loaded file again, with or without the step that is taken back, into
    /// a workspace that is empty but for its options.
    using DecodeAgain = std::function<void(Workspace& target, bool withStep, MessageHost& host)>;

    /// Keeps the song as it is now, for the change that follows; what could be taken back before
    /// stays until Arm. False when memory does not suffice: then nothing is kept at all, since the
    /// older state is given up first.
    bool Keep(const Workspace& workspace);
    /// The change called `name` has been carried out: from now on it can be taken back.
    void Arm(const Text& name);
    /// Puts the song back as Keep found it, after a change that failed.
    void Restore(Workspace& workspace) const;

    /// A step of loading can be taken back by decoding the file again.
    void ArmLoadStep(const Text& name, DecodeAgain decode);

    /// Nothing can be taken back any more.
    void Drop();

    bool Available() const { return armed_; }
    /// What is taken back, or put back again while `Taken`.
    const Text& Name() const { return name_; }
    /// The change has been taken back; Exchange carries it out again.
    bool Taken() const { return taken_; }

    /// Data bytes of the song have been changed in place.
    void Touch() { touched_ = true; }
    /// The song in memory has been changed in place since: what taking back would undo as well.
    bool Touched() const { return touched_; }

    /// Exchanges the song in memory with the kept one. Throws std::bad_alloc and EMidiError; the
    /// song in memory is as before then.
    void Exchange(Workspace& workspace, MessageHost& host);

    /// The song in memory has been saved: the kept one differs from the file now.
    void SongSaved() { former_.modified = true; }

    /// Bytes that the kept songs take.
    std::size_t Bytes() const;

private:
    struct State {
        song::SongSnapshot song;
        bool modified = false;
        song::LoadReport loadReport;
        instruments::PreparationReport preparation;
    };

    static void Take(State& state, const Workspace& workspace);
    static void Put(const State& state, Workspace& workspace);
    void ExchangeLoaded(Workspace& workspace, MessageHost& host);

    State former_;
    State next_;
    DecodeAgain decode_;
    Text name_{Both{""}};
    bool armed_ = false;
    bool taken_ = false;
    bool touched_ = false;
};

} // namespace tracksmith::session
