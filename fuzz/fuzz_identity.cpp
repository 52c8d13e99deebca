#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "fuzz_song.h"

#include "instruments/identity/identity_question.h"

// Anything that an input may deliver while instruments are asked who they are, in pieces: however
// it is cut, the same devices have answered, each is named by what it sent, and asking ends. The
// first byte says how long the pieces are, the rest is what comes in.

using namespace tracksmith;
using namespace tracksmith::fuzz;
using namespace tracksmith::instruments;

namespace {

using Time = IdentityQuestion::Time;

const IdentityTable& Table() {
    static const IdentityTable table(
        "maker\tname\n41\tRoland\n43\tYamaha\n42\tKorg\n00 20 33\tAccess\n",
        "maker\tbrand\tfamily\tmember\tsubmodel\tmodel\tinstrument\tsource\n"
        "41\tRoland\t42 00\t03 00\t\tSC-88Pro\t\tmanual\n"
        "43\tYamaha\t00 44\t1B 17\t\tTyros 5\t\tmanual\n");
    return table;
}

void Deliver(IdentityQuestion& question, MessageBytes bytes, std::size_t piece, Time now) {
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(piece, bytes.size()))) {
        question.Take(bytes.first(std::min(piece, bytes.size())), now);
    }
}

std::vector<InstrumentAnswer> Ask(MessageBytes bytes, std::size_t piece) {
    IdentityQuestion question(Table());
    Time now{};
    Require(question.Next(now) == IdentityQuestion::Step::SendIdentityRequest, "nobody is asked");
    Deliver(question, bytes, piece, now);
    auto step = question.Next(now);
    for (int looks = 0; step != IdentityQuestion::Step::End; step = question.Next(now)) {
        Require(++looks < 8, "asking does not end");
        if (step == IdentityQuestion::Step::SendXgModelRequest) {
            Deliver(question, bytes, piece, now);
        }
        now += IdentityQuestion::kPatience;
    }
    return question.Answers();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const MessageBytes bytes(data + 1, size - 1);
    const std::vector<InstrumentAnswer> answers = Ask(bytes, size);
    const std::vector<InstrumentAnswer> inPieces = Ask(bytes, 1U + data[0] % 9U);
    Require(answers.size() == inPieces.size(), "pieces change who answers");
    for (std::size_t i = 0; i < answers.size(); ++i) {
        const InstrumentAnswer& answer = answers[i];
        const bool same = answer.reply == inPieces[i].reply &&
                          answer.xgModel == inPieces[i].xgModel &&
                          answer.maker == inPieces[i].maker && answer.model == inPieces[i].model;
        Require(same, "pieces change an answer");
        Require(!answer.reply.maker.empty() || !answer.xgModel.empty(), "an answer of nobody");
        const auto readable = [](const std::string& text) {
            return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
        };
        Require(readable(answer.reply.maker + answer.reply.family + answer.reply.member +
                         answer.reply.version + answer.xgModel),
                "an answer that cannot be shown");
    }
    return 0;
}
