#include "instruments/catalogue.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

#include "instruments/output_assignment.h"

namespace tracksmith::instruments {
namespace {

TEST(CatalogueTest, HasEveryCodeOnceAndFindsItByExactName) {
    std::set<int> ids;
    std::set<std::string_view> names;
    for (const Instrument& instrument : Catalogue()) {
        ids.insert(instrument.id);
        names.insert(instrument.name);
        EXPECT_EQ(FindInstrument(instrument.name), &instrument);
        EXPECT_EQ(FindInstrument(instrument.id), &instrument) << instrument.name;
        EXPECT_TRUE(instrument.name.starts_with(MakerOf(instrument)));
    }
    EXPECT_EQ(ids.size(), 109U);
    EXPECT_EQ(names.size(), 109U);
    EXPECT_EQ(*ids.rbegin(), 108);
    EXPECT_EQ(Catalogue().front().name, "Deebach MAX II");
    EXPECT_EQ(Catalogue().back().name, "Yamaha XG Soundset");
    EXPECT_EQ(FindInstrument("Yamaha Tyros 5")->id, 74);
    EXPECT_EQ(FindInstrument("Yamaha Tyros5"), nullptr);
    EXPECT_EQ(FindInstrument("yamaha genos"), nullptr);
    EXPECT_EQ(FindInstrument(InstrumentId{109}), nullptr);
    EXPECT_EQ(MakerOf(*FindInstrument(InstrumentId{100})), "MB Music");
}

TEST(OutputTableTest, KeepsTheCodeOfTheLastKnownName) {
    OutputAssignment output;
    output.SetName("abc");
    EXPECT_EQ(output.id, kGmSoundset);
    output.SetName("Yamaha Genos");
    output.SetName("A keyboard of the future");
    EXPECT_EQ(output.id, 87);
    EXPECT_EQ(output.name, "A keyboard of the future");
}

TEST(OutputTableTest, GivesEachChannelTheInstrumentOfItsOutput) {
    OutputTable table;
    table.outputs.resize(2);
    table.outputs[0].SetName("Korg Pa4X Musikant");
    table.outputs[1].SetName("Roland SC-88");
    table.outputOfChannel[9] = 1;
    table.outputOfChannel[15] = 7; // an output that has gone
    EXPECT_EQ(table.InstrumentOfChannel(0), 82);
    EXPECT_EQ(table.InstrumentOfChannel(9), 15);
    EXPECT_EQ(table.InstrumentOfChannel(15), 82);
}

} // namespace
} // namespace tracksmith::instruments
