#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "support/midi_file_builder.h"

#include "midi/backends/loop/backend.h"

namespace tracksmith::test {

/// An instrument that is connected to two loops: it hears what is sent to the first and answers at
/// the second, on the sending thread. The first loop echoes as every loop does.
class LoopInstrument {
public:
    explicit LoopInstrument(std::shared_ptr<midi::loop::LoopBackend> loop)
        : loop_(std::move(loop)) {
        midi::ResultCode result = midi::kNoError;
        ear_ = loop_->OpenInput(
            "Loop 1", [this](auto message, std::uint64_t) { Hear(message); }, result);
    }

    /// What it answers to a message (F0 to F7), each piece delivered by itself.
    void SetAnswer(const Bytes& request, std::vector<Bytes> pieces) {
        answers_[request] = std::move(pieces);
    }
    void SetGenos() { SetAnswer(kIdentityRequest, {kGenosReply}); }
    int Heard() const { return heard_; }

    inline static const Bytes kIdentityRequest{0xF0, 0x7E, 0x7F, 0x06, 0x01, 0xF7};
    inline static const Bytes kXgRequest{0xF0, 0x43, 0x20, 0x4C, 0x01, 0x00, 0x00, 0xF7};
    inline static const Bytes kGenosReply{0xF0, 0x7E, 0x00, 0x06, 0x02, 0x43, 0x00, 0x44,
                                          0x42, 0x1C, 0x0B, 0x00, 0x00, 0x01, 0xF7};
    /// The XG model name "PSR-SX900".
    inline static const Bytes kXgReply{0xF0, 0x43, 0x00, 0x4C, 0x00, 0x0E, 0x01, 0x00, 0x00,
                                       0x50, 0x53, 0x52, 0x2D, 0x53, 0x58, 0x39, 0x30, 0x30,
                                       0x20, 0x20, 0x20, 0x20, 0x20, 0x6B, 0xF7};

private:
    void Hear(std::span<const std::uint8_t> message) {
        const auto answer = answers_.find(Bytes(message.begin(), message.end()));
        heard_ += message.front() == 0xF0 ? 1 : 0;
        for (const Bytes& piece :
             answer == answers_.end() ? std::vector<Bytes>() : answer->second) {
            loop_->Deliver(1, piece);
        }
    }

    std::shared_ptr<midi::loop::LoopBackend> loop_;
    std::map<Bytes, std::vector<Bytes>> answers_;
    std::atomic<int> heard_ = 0;
    std::unique_ptr<midi::InputConnection> ear_; // last, so that it ends first
};

} // namespace tracksmith::test
