#include "app/session/take_back.h"

#include <new>
#include <utility>

#include "base/memory_budget.h"

namespace tracksmith::session {

bool TakeBack::Keep(const Workspace& workspace) {
    const std::size_t song = workspace.song.pool.UsedBytes();
    if (2 * song + Bytes() > SongMemoryBudget()) {
        Drop();
    }
    if (2 * song > SongMemoryBudget()) {
        return false;
    }
    try {
        Take(next_, workspace);
    } catch (const std::bad_alloc&) {
        Drop();
        return false;
    }
    return true;
}

void TakeBack::Arm(const Text& name) {
    std::swap(former_, next_);
    next_.song.Drop();
    decode_ = nullptr;
    name_ = name;
    armed_ = true;
    taken_ = false;
    touched_ = false;
}

void TakeBack::Restore(Workspace& workspace) const {
    Put(next_, workspace);
}

void TakeBack::ArmLoadStep(const Text& name, DecodeAgain decode) {
    Drop();
    decode_ = std::move(decode);
    former_.modified = false;
    name_ = name;
    armed_ = true;
}

void TakeBack::Drop() {
    former_ = {};
    next_ = {};
    decode_ = nullptr;
    armed_ = false;
    taken_ = false;
    touched_ = false;
}

void TakeBack::Exchange(Workspace& workspace, MessageHost& host) {
    if (decode_) {
        ExchangeLoaded(workspace, host);
    } else {
        Take(next_, workspace);
        Put(former_, workspace);
        std::swap(former_, next_);
    }
    taken_ = !taken_;
    touched_ = false;
}

// Into a song of its own first, so that the one in memory stays when memory ends.
void TakeBack::ExchangeLoaded(Workspace& workspace, MessageHost& host) {
    Workspace decoded;
    static_cast<WorkOptions&>(decoded) = static_cast<const WorkOptions&>(workspace);
    decode_(decoded, taken_, host);
    workspace.song.Swap(decoded.song);
    workspace.loadReport = decoded.loadReport;
    workspace.preparation = std::move(decoded.preparation);
    std::swap(workspace.modified, former_.modified);
}

void TakeBack::Take(State& state, const Workspace& workspace) {
    state.song.Take(workspace.song);
    state.modified = workspace.modified;
    state.loadReport = workspace.loadReport;
    state.preparation = workspace.preparation;
}

void TakeBack::Put(const State& state, Workspace& workspace) {
    instruments::PreparationReport preparation = state.preparation;
    state.song.Restore(workspace.song);
    workspace.modified = state.modified;
    workspace.loadReport = state.loadReport;
    workspace.preparation = std::move(preparation);
}

std::size_t TakeBack::Bytes() const {
    return former_.song.Bytes() + next_.song.Bytes();
}

} // namespace tracksmith::session
