#include "player/due_queue.h"

#include <algorithm>
#include <utility>

namespace tracksmith::player {
namespace {

bool Later(const DueQueue::Entry& a, const DueQueue::Entry& b) {
    return a > b;
}

} // namespace

void DueQueue::Add(Entry entry) {
    entries_.push_back(entry);
    std::push_heap(entries_.begin(), entries_.end(), Later);
}

void DueQueue::ReplaceFirst(Entry entry) {
    entries_.front() = entry;
    Sink();
}

void DueQueue::RemoveFirst() {
    entries_.front() = entries_.back();
    entries_.pop_back();
    if (!entries_.empty()) {
        Sink();
    }
}

// Lets the first entry sink to its place; mostly it moves only a little or not at all.
void DueQueue::Sink() {
    std::size_t place = 0;
    for (;;) {
        std::size_t child = 2 * place + 1;
        if (child >= entries_.size()) {
            return;
        }
        if (child + 1 < entries_.size() && Later(entries_[child], entries_[child + 1])) {
            ++child;
        }
        if (!Later(entries_[place], entries_[child])) {
            return;
        }
        std::swap(entries_[place], entries_[child]);
        place = child;
    }
}

} // namespace tracksmith::player
