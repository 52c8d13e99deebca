#include <QSlider>
#include <QSpinBox>

#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

/// A built-in instrument that makes no sound and keeps what it is told.
class QuietSynth : public devices::SynthDevice {
public:
    midi::MidiOutputDriver& Driver() override { return driver_; }
    void SetOptions(const devices::SynthOptions& options) override { told = options; }
    void SetVolume(int percent) override { volume = percent; }
    std::string Trouble(Language /*language*/) const override {
        return told.soundfont.filename() == "bad.sf2" ? "This SoundFont is damaged." : "";
    }

    devices::SynthOptions told;
    int volume = -1;

private:
    midi::PortableOutputDriver driver_{std::make_shared<midi::loop::LoopBackend>(1)};
};

/// The built-in instrument is the only output.
class SynthSettingsTest : public FormTest {
protected:
    std::unique_ptr<devices::MidiDevices> Devices() const override {
        auto synth = std::make_unique<QuietSynth>();
        synth_ = synth.get();
        return std::make_unique<devices::MidiDevices>(devices::SystemDrivers(), std::move(synth));
    }
    void OpenDialog() { Trigger("MMS_MidiPorts"); }
    int StoredVolume() const { return store_->ReadIntFromUserRegistry("SynthVolume", -1); }

    mutable QuietSynth* synth_ = nullptr;
};

TEST_F(SynthSettingsTest, ASoundFontIsChosenAndItsTroubleTold) {
    OpenDialog();
    const std::string usual = LabelText("L_SoundFont");
    EXPECT_FALSE(Find<QLabel>("L_SoundTrouble")->isVisible());
    chooser_->answer = Path("bad.sf2");
    Find<QPushButton>("Btn_ChooseSoundFont")->click();
    EXPECT_EQ(LabelText("L_SoundFont"), "bad.sf2");
    EXPECT_EQ(synth_->told.soundfont, Path("bad.sf2"));
    EXPECT_TRUE(Find<QLabel>("L_SoundTrouble")->isVisible());
    EXPECT_EQ(LabelText("L_SoundTrouble"), "This SoundFont is damaged.");
    chooser_->answer.reset();
    Find<QPushButton>("Btn_ChooseSoundFont")->click();
    EXPECT_EQ(chooser_->asked, Path("bad.sf2").parent_path());
    EXPECT_EQ(LabelText("L_SoundFont"), "bad.sf2");
    Find<QDialog>("Dlg_MidiPorts")->close();
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    Trigger("MMP_PlayStop");
    EXPECT_EQ(LabelText("Lbl_Notice"), "This SoundFont is damaged.");
    Trigger("MMP_PlayStop");
    OpenWindow();
    EXPECT_EQ(synth_->told.soundfont, Path("bad.sf2"));
    OpenDialog();
    Find<QPushButton>("Btn_UsualSoundFont")->click();
    EXPECT_EQ(LabelText("L_SoundFont"), usual);
    EXPECT_TRUE(synth_->told.soundfont.empty());
    EXPECT_FALSE(Find<QLabel>("L_SoundTrouble")->isVisible());
}

TEST_F(SynthSettingsTest, LoudnessAndVoicesAreHeardAtOnceAndRemembered) {
    EXPECT_EQ(synth_->volume, 100);
    OpenDialog();
    auto* volume = Find<QSlider>("TB_SynthVolume");
    EXPECT_EQ(volume->accessibleName(), QStringLiteral("Volume"));
    EXPECT_FALSE(Find<QSpinBox>("E_Polyphony")->accessibleName().isEmpty());
    volume->setValue(40);
    EXPECT_EQ(synth_->volume, 40);
    EXPECT_EQ(StoredVolume(), 40);
    volume->setSliderDown(true); // stored when it is let go
    volume->setValue(10);
    EXPECT_EQ(synth_->volume, 10);
    EXPECT_EQ(StoredVolume(), 40);
    volume->setSliderDown(false);
    EXPECT_EQ(StoredVolume(), 10);
    Find<QSpinBox>("E_Polyphony")->setValue(64);
    EXPECT_EQ(synth_->told.polyphony, 64);
    OpenWindow();
    EXPECT_EQ(synth_->volume, 10);
    EXPECT_EQ(synth_->told.polyphony, 64);
    OpenDialog();
    EXPECT_EQ(Find<QSlider>("TB_SynthVolume")->value(), 10);
    EXPECT_EQ(Find<QSpinBox>("E_Polyphony")->value(), 64);
    store_->WriteIntToUserRegistry("SynthVolume", 500); // by hand
    store_->WriteIntToUserRegistry("SynthPolyphony", 1);
    OpenWindow();
    EXPECT_EQ(synth_->volume, 100);
    EXPECT_EQ(synth_->told.polyphony, 16);
}

} // namespace
} // namespace tracksmith::forms
