#include "editing/event_copy.h"

#include "song/event_chain.h"

namespace tracksmith::editing {

song::EventLink CopyEvent(const song::MidiEvent& event, song::EventPool& pool) {
    const song::EventLink copy =
        song::NewShortEvent(pool, event.tick, event.status, event.data1, event.data2);
    copy->length = event.length;
    copy->kind = event.kind;
    copy->metaType = event.metaType;
    copy->origData1 = event.origData1;
    copy->origData2 = event.origData2;
    copy->timeMs = event.timeMs;
    copy->data = pool.NewData(event.data.Bytes());
    return copy;
}

} // namespace tracksmith::editing
