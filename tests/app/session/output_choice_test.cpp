#include "app/session/output_choice.h"

#include "app/session/session_fixture.h"

namespace tracksmith::session {
namespace {

using namespace test;

class OutputChoiceTest : public SessionFixture {
protected:
    OutputChoiceTest() {
        driver.Add("Module 20:0");
        Player().CheckPorts();
    }
    player::TMidiPlayer& Player() { return session.Controls().Player(); }
    OutputChoice& Outputs() { return session.Controls().Outputs(); }
    std::string NameOf(std::size_t channel) {
        for (const player::OutputDevice& device : Player().OutputDevices()) {
            if (device.port == Player().Routes().Port(channel)) {
                return device.productName;
            }
        }
        return {};
    }
};

TEST_F(OutputChoiceTest, TheOutputOfAllChannelsIsFoundByItsName) {
    EXPECT_EQ(Outputs().Output(), "Keyboard");
    Outputs().ChooseOutput("Module 20:0");
    EXPECT_EQ(Outputs().Output(), "Module 20:0");
    EXPECT_EQ(NameOf(15), "Module 20:0");
    Outputs().ChooseOutput("Keyboard");
    EXPECT_EQ(NameOf(15), "Keyboard");
    Outputs().ChooseOutput("Module 28:0"); // the same one, numbered anew by the system
    EXPECT_EQ(NameOf(15), "Module 20:0");
    EXPECT_EQ(Outputs().MissingOutput(), "");
    Outputs().ChooseOutput("Gone");
    EXPECT_EQ(Outputs().Output(), "Keyboard");
    EXPECT_EQ(Outputs().MissingOutput(), "Gone");
}

TEST_F(OutputChoiceTest, RoutesAreRememberedForEveryTarget) {
    for (std::uint8_t target = 0; target < 16; ++target) {
        Outputs().SetRoute(5, {"Module 20:0", target});
        EXPECT_EQ(Outputs().Route(5).target, target);
        EXPECT_EQ(Player().Routes().Target(5), target);
    }
    EXPECT_EQ(NameOf(5), "Module 20:0");
    EXPECT_EQ(NameOf(4), "Keyboard");
    for (const int broken : {-1, 16}) {
        settings.Store().WriteIntToUserRegistry("RouteChannel05", broken);
        EXPECT_EQ(Outputs().Route(5).target, 5);
    }
    Outputs().ResetRoutes();
    EXPECT_EQ(NameOf(5), "Keyboard");
    EXPECT_EQ(Player().Routes().Target(5), 5);
}

} // namespace
} // namespace tracksmith::session
