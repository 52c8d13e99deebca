#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "instruments/identity/identity_question.h"

namespace tracksmith::instruments {
namespace {

using std::chrono::milliseconds;
using Bytes = std::vector<std::uint8_t>;
using Step = IdentityQuestion::Step;

const Bytes kGenos{0xF0, 0x7E, 0x00, 0x06, 0x02, 0x43, 0x00, 0x44,
                   0x42, 0x1C, 0x0B, 0x00, 0x00, 0x01, 0xF7};

Bytes Reply(Bytes behindSubId) {
    behindSubId.insert(behindSubId.begin(), {0xF0, 0x7E, 0x10, 0x06, 0x02});
    behindSubId.push_back(0xF7);
    return behindSubId;
}

/// A dump of the XG model name, padded to 14 characters, with `more` bytes behind it.
Bytes XgDump(std::string name, const Bytes& more = {}) {
    name.resize(14, ' ');
    Bytes dump{0xF0, 0x43, 0x00, 0x4C, 0x00, static_cast<std::uint8_t>(14 + more.size()), 1, 0, 0};
    std::ranges::copy(name, std::back_inserter(dump));
    std::ranges::copy(more, std::back_inserter(dump));
    unsigned sum = 0;
    for (std::size_t i = 4; i < dump.size(); ++i) {
        sum += dump[i];
    }
    dump.push_back(static_cast<std::uint8_t>((128 - sum % 128) % 128));
    dump.push_back(0xF7);
    return dump;
}

TEST(IdentityMessages, OnlyWholeAnswersAreRead) {
    const IdentityReply genos{"43", "00 44", "42 1C", "0B 00 00 01"};
    EXPECT_EQ(ReadIdentityReply(kGenos), genos);
    EXPECT_EQ(ReadIdentityReply(Reply({0x00, 0x20, 0x29, 1, 2, 3, 4, 5})),
              (IdentityReply{"00 20 29", "01 02", "03 04", "05"}));
    Bytes request{0xF0};
    request.insert(request.end(), kIdentityRequest.begin(), kIdentityRequest.end());
    Bytes notEnded = kGenos;
    notEnded.at(kGenos.size() - 1) = 0x01;
    Bytes status = kGenos;
    status.at(8) = 0x90;
    for (const Bytes& wrong :
         {Bytes{}, Bytes{0xF0}, Bytes{0xF0, 0xF7}, request, notEnded, status, Reply({}),
          Reply({0x43, 0, 0x44, 0x42}), Reply({0, 0x20}), Reply({0, 0x20, 0x29, 1, 2, 3})}) {
        EXPECT_FALSE(ReadIdentityReply(wrong)) << HexText(wrong);
    }
}

TEST(IdentityMessages, XgModelNamesNeedTheirChecksum) {
    EXPECT_EQ(ReadXgModelName(XgDump(" PSR-SX900")), "PSR-SX900");
    EXPECT_EQ(ReadXgModelName(XgDump("MU80", {1, 2})), "MU80"); // level and type behind it
    Bytes wrongSum = XgDump("MU80");
    ++wrongSum[12];
    Bytes wrongCount = XgDump("MU80");
    ++wrongCount[5];
    Bytes otherAddress = XgDump("MU80");
    otherAddress[7] = 1;
    otherAddress[otherAddress.size() - 2] -= 1;
    Bytes request(kXgModelRequest.begin(), kXgModelRequest.end());
    request.insert(request.begin(), 0xF0);
    for (const Bytes& wrong : {wrongSum, wrongCount, otherAddress, request, XgDump(""),
                               XgDump("MU\x01"), Bytes(kGenos)}) {
        EXPECT_FALSE(ReadXgModelName(wrong)) << HexText(wrong);
    }
}

TEST(IdentityTable, ShippedFilesNameModels) {
    const IdentityTable table = IdentityTable::Load();
    ASSERT_TRUE(table.IsComplete());
    struct Case {
        IdentityReply reply;
        const char* name;
        const char* instrument;
    };
    for (const Case& each : std::vector<Case>{
             {{"43", "00 44", "42 1C", ""}, "Yamaha|Genos", "Yamaha Genos"},
             {{"42", "60 00", "5D 00", "01 05 00 00"}, "Korg|Pa700", "Korg Pa700"},
             {{"41", "42 00", "00 07", "00 00 00 00"}, "Roland|SC-8820", "Roland SC-8820"},
             {{"43", "00 41", "1B 04", ""}, "Yamaha|MU2000", "Yamaha XG Soundset"},
             {{"41", "1A 00", "00 02", "01 01 00 00"}, "Roland|HP-530", ""},
             {{"41", "1A 00", "00 02", "09 01 00 00"}, "Roland|HP-330/245/HP-530", ""},
             {{"26", "00 01", "00 00", ""}, "Ketron|", ""},
             {{"00 20 29", "7F 7F", "7F 7F", ""}, "Focusrite / Novation|", ""},
             {{"00 7F 7F", "00 44", "42 1C", ""}, "|", ""}}) {
        const InstrumentAnswer answer = table.Name(each.reply);
        EXPECT_EQ(answer.maker + '|' + answer.model, each.name);
        EXPECT_EQ(answer.instrument == nullptr ? "" : answer.instrument->name, each.instrument);
    }
    EXPECT_TRUE(table.Name({"43", "00 41", "1B 04", ""}).FollowsSetOnly());
    EXPECT_FALSE(table.Name({"43", "00 44", "42 1C", ""}).FollowsSetOnly());
}

TEST(IdentityTable, KeepsWhatIsWholeOfADamagedFile) {
    const std::string head = "maker\tbrand\tfamily\tmember\tsubmodel\tmodel\tinstrument\tsource\n";
    const std::string good = "43\tYamaha\t00 44\t42 1C\t\tGenos\tYamaha Genos\tx\n";
    const IdentityReply genos{"43", "00 44", "42 1C", ""};
    EXPECT_TRUE(IdentityTable("maker\tname\n", head + good).IsComplete());
    for (const std::string& models :
         {std::string(), head + "43\tYamaha\n" + good,
          head + "43\tYamaha\t00 44\t42 1C\t\tGenos\tYamaha Genos 9\tx\n"}) {
        const IdentityTable table("maker\tname\n", models);
        EXPECT_FALSE(table.IsComplete()) << models;
        EXPECT_EQ(table.Name(genos).instrument != nullptr, models.ends_with(good)) << models;
    }
}

/// Asks with a clock of its own.
class IdentityQuestionTest : public testing::Test {
protected:
    Step Next() { return question_.Next(now_); }
    void Wait(milliseconds time) { now_ += time; }
    void Take(const Bytes& bytes) { question_.Take(bytes, now_); }
    std::string Models() const {
        std::string models;
        for (const InstrumentAnswer& answer : question_.Answers()) {
            models += answer.maker + ' ' + answer.model + ';';
        }
        return models;
    }
    /// To the second request.
    void AskForXg() {
        ASSERT_EQ(Next(), Step::SendIdentityRequest);
        Wait(IdentityQuestion::kPatience);
        ASSERT_EQ(Next(), Step::SendXgModelRequest);
        ASSERT_EQ(Next(), Step::Wait);
    }

    const IdentityTable table_ = IdentityTable::Load();
    IdentityQuestion question_{table_};
    IdentityQuestion::Time now_;
};

TEST_F(IdentityQuestionTest, AnswersInPiecesAmongOtherMessages) {
    ASSERT_EQ(Next(), Step::SendIdentityRequest);
    ASSERT_EQ(Next(), Step::Wait);
    Take({0x90, 60, 100, 0xF0, 0x41, 0x10, 0xF7, 0xFE});          // foreign, and active sensing
    Take({0xF0, 0x7E, 0x00, 0x06, 0x02, 0x43, 0xF0, 0x7E, 0x00}); // cut off by a new one
    Take({0x06, 0xF8, 0x02, 0x43, 0x00, 0x44});
    Take({0xFE, 0x42, 0x1C, 0x0B, 0x00, 0x00, 0x01});
    Take(Bytes(1'000, 0x00)); // no answer is that long
    EXPECT_EQ(Models(), "");
    Take(kGenos);
    Take(kGenos);
    EXPECT_EQ(Models(), "Yamaha Genos;");
    Wait(IdentityQuestion::kSettling);
    EXPECT_EQ(Next(), Step::End);
}

TEST_F(IdentityQuestionTest, SilentInstrumentsAreAskedForTheirXgName) {
    ASSERT_EQ(Next(), Step::SendIdentityRequest);
    Take(XgDump("PSR-SX900")); // not asked for yet
    Wait(IdentityQuestion::kPatience - milliseconds(1));
    ASSERT_EQ(Next(), Step::Wait);
    Wait(milliseconds(1));
    ASSERT_EQ(Next(), Step::SendXgModelRequest);
    Take(XgDump("PSR-SX900"));
    Take(kGenos); // late, but an answer
    Wait(IdentityQuestion::kSettling);
    EXPECT_EQ(Next(), Step::End);
    ASSERT_EQ(Models(), "Yamaha PSR-SX900;Yamaha Genos;");
    EXPECT_EQ(question_.Answers()[0].instrument->name, "Yamaha PSR-SX900");
}

TEST_F(IdentityQuestionTest, XgNameOfAYamahaWithUnknownCodes) {
    ASSERT_EQ(Next(), Step::SendIdentityRequest);
    Take(Reply({0x43, 0x00, 0x44, 0x7F, 0x7F, 0, 0, 0, 1}));
    Wait(IdentityQuestion::kSettling);
    ASSERT_EQ(Next(), Step::SendXgModelRequest);
    Take(XgDump("MU-XYZ"));
    ASSERT_EQ(Models(), "Yamaha MU-XYZ;");
    const InstrumentAnswer& answer = question_.Answers()[0];
    EXPECT_EQ(answer.reply.member, "7F 7F");
    EXPECT_TRUE(answer.FollowsSetOnly());
    EXPECT_EQ(answer.instrument->id, kXgSoundset);
}

TEST_F(IdentityQuestionTest, NobodyAnswers) {
    AskForXg();
    Wait(IdentityQuestion::kPatience);
    EXPECT_EQ(Next(), Step::End);
    EXPECT_EQ(Models(), "");
}

} // namespace
} // namespace tracksmith::instruments
