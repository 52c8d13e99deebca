#pragma once

namespace tracksmith::session {

struct ChangeKind;

/// What a session tells whoever depends on its song, its file or its player: windows, the mixer,
/// the editing tools. Called on the owner's thread after everything has been brought in order.
/// Each member may be left out.
class SessionListener {
public:
    SessionListener() = default;
    SessionListener(const SessionListener&) = delete;
    SessionListener& operator=(const SessionListener&) = delete;
    virtual ~SessionListener() = default;

    /// The song is about to be changed, not replaced: it is still as it was, playing has ended.
    virtual void OnChanging() {}
    /// The song has been changed or replaced: every link into it must be found again.
    virtual void OnSongChanged(const ChangeKind& /*kind*/) {}
    /// Another song, or none, is about to replace this one, which has changes that are not saved.
    virtual void OnLeavingSong() {}
    /// File name, modified mark or what can be taken back has changed.
    virtual void OnFileState() {}
    /// The song has been written to its file, as it is in memory.
    virtual void OnSaved() {}
    /// Playing has begun or ended.
    virtual void OnPlaying(bool /*playing*/) {}
    /// The place in the song was moved by somebody.
    virtual void OnPlace() {}
    virtual void OnLoop() {}
    virtual void OnTempo() {}
    /// A channel goes to another output.
    virtual void OnRoutes() {}
    /// An output or its state has changed.
    virtual void OnPorts() {}
    /// Another song is heard in place of the one in memory, or that one again.
    virtual void OnHeardSong() {}
    /// The song was to be changed while it must not be: it was not. See Session::WhyNoChange.
    virtual void OnChangeRefused() {}
};

} // namespace tracksmith::session
