#include "instruments/revoicer/voice_meanings.h"

#include <array>

namespace tracksmith::instruments {
namespace {

constexpr std::array<std::string_view, 128> kPrograms{
    // Piano
    "piano=6 grand=5 concert=2 acoustic=1 electric=-9 upright=-1 honkytonk=-4 "
    "strings=-5 harpsichord=-8",
    "piano=6 bright=5 rock=3 pop=2 grand=3 electric=-9 honkytonk=-3 strings=-5 "
    "harpsichord=-8 horn=-9",
    "electric=3 grand=4 piano=5 cp=5 midi=2 strings=-5",
    "honkytonk=8 piano=4 saloon=5 upright=2 electric=-9",
    "electric=4 piano=5 stage=4 suitcase=4 vintage=3 tine=3 grand=-4",
    "electric=4 piano=5 dx=5 digital=3 modern=3 galaxy=3 fm=4 grand=-4", "harpsichord=10",
    "clavi=10 funk=1",
    // Chromatic percussion
    "celesta=10 bell=1", "glockenspiel=10", "music=4 box=5 bell=1", "vibraphone=10 jazz=1",
    "marimba=10", "xylophone=10", "tubular=6 bell=4 chime=4",
    "dulcimer=10 santur=5 hammered=3 cimbalom=5 zither=4",
    // Organ
    "organ=6 drawbar=4 jazz=4 cool=1 full=2 church=-5 pipe=-5 rock=-1",
    "organ=6 percussion=5 jazz=2 drawbar=2 church=-5 pipe=-5",
    "organ=6 rock=6 rotary=4 drawbar=1 church=-5 pipe=-5",
    "organ=5 church=6 pipe=5 chapel=4 full=1 rock=-4 jazz=-4",
    "organ=4 reed=5 harmonium=6 chapel=2 rock=-4 jazz=-4",
    "accordion=8 musette=2 french=1 tango=-1 bass=-6", "harmonica=10 blues=1 jazz=1",
    "accordion=6 tango=6 bandoneon=8 bandneon=8 musette=1 bass=-6",
    // Guitar
    "guitar=5 nylon=6 spanish=4 classical=4 gut=4 flamenco=3 acoustic=2 steel=-5 electric=-6 "
    "bass=-9",
    "guitar=5 steel=6 folk=4 acoustic=3 western=3 nylon=-5 electric=-6 pedal=-5 bass=-9",
    "guitar=5 jazz=6 electric=2 hollow=3 octave=1 nylon=-5 steel=-4 distortion=-5 bass=-9",
    "guitar=5 clean=6 electric=2 solid=3 vintage=1 strat=3 jazz=-2 nylon=-5 steel=-4 distortion=-5 "
    "bass=-9",
    "guitar=5 muted=7 electric=2 nylon=-5 steel=-4 distortion=-4 bass=-9",
    "guitar=5 overdriven=7 crunch=4 blues=2 drive=4 electric=1 nylon=-5 bass=-9",
    "guitar=5 distortion=7 lead=2 rock=3 heavy=3 power=3 feedback=-1 electric=1 nylon=-5 bass=-9",
    "guitar=4 harmonics=6 harmonic=6 feedback=3 bass=-9",
    // Bass
    "bass=5 acoustic=6 upright=5 wood=3 double=2 electric=-4 synth=-5",
    "bass=5 finger=6 electric=3 acoustic=-4 synth=-5 slap=-3",
    "bass=5 pick=7 electric=2 acoustic=-4 synth=-5", "bass=5 fretless=8 synth=-5",
    "bass=5 slap=7 funk=3 synth=-4", "bass=5 slap=6 thumb=4 funk=3 synth=-4",
    "bass=5 synth=5 analog=2 resonance=1 acoustic=-5 finger=-4 guitar=-3",
    "bass=5 synth=5 rubber=2 fm=2 acoustic=-5 finger=-4 guitar=-3",
    // Strings
    "violin=8 solo=3 classical=1 strings=-3 section=-3 organ=-8", "viola=9 solo=2 strings=-3",
    "cello=9 solo=2 strings=-3", "contrabass=9 bass=2 bowed=2 arco=3 strings=-3 electric=-5",
    "strings=5 tremolo=7", "strings=4 pizzicato=8", "harp=9 orchestra=2 blues=-9", "timpani=10",
    // Ensemble
    "strings=6 ensemble=3 orchestra=2 section=2 concert=1 synth=-4 pizzicato=-6 tremolo=-6 solo=-3 "
    "piano=-6 guitar=-9 violin=-3 viola=-3 cello=-3",
    "strings=6 slow=4 ensemble=3 orchestra=2 chamber=1 synth=-4 pizzicato=-6 tremolo=-6 solo=-3 "
    "piano=-6 guitar=-9 violin=-3 viola=-3 cello=-3",
    "strings=5 synth=5 analog=3 pizzicato=-6 piano=-6",
    "strings=5 synth=5 analog=2 slow=2 pizzicato=-6 piano=-6",
    "choir=6 aah=5 voice=2 gospel=1 synth=-2", "voice=4 ooh=6 choir=3 doo=2 synth=-2",
    "synth=4 voice=5 choir=2 vocoder=2 air=1", "orchestra=4 hit=7",
    // Brass
    "trumpet=8 solo=1 muted=-6 section=-2", "trombone=9 solo=1 section=-2 muted=-3",
    "tuba=10 brass=1", "trumpet=6 muted=7 wah=1", "horn=7 french=5 orchestra=1 english=-9",
    "brass=7 section=4 ensemble=2 big=2 band=2 pop=1 synth=-5", "brass=5 synth=6 analog=2",
    "brass=5 synth=6 soft=3 analog=1",
    // Reed
    "saxophone=6 soprano=7 section=-3", "saxophone=6 alto=7 section=-3",
    "saxophone=6 tenor=7 section=-3", "saxophone=6 baritone=7 section=-3", "oboe=10",
    "english=6 horn=5 cor=4 french=-9", "bassoon=10", "clarinet=9 jazz=1 bass=-5",
    // Pipe
    "piccolo=9 flute=2", "flute=8 classical=2 sweet=1 pan=-5", "recorder=10",
    "pan=6 flute=4 pipes=3 zampona=4", "bottle=7 blown=3 pan=1 flute=1", "shakuhachi=10 flute=1",
    "whistle=9", "ocarina=10",
    // Synth lead
    "lead=5 square=7 synth=2 sine=1", "lead=5 sawtooth=7 synth=2",
    "lead=3 calliope=8 synth=2 organ=-3", "lead=4 chiff=8 synth=2",
    "lead=4 charang=8 synth=2 guitar=1 distortion=2", "lead=4 voice=5 synth=3",
    "lead=4 fifth=7 fifths=7 big=2 synth=2", "lead=4 bass=4 big=2 fat=3 synth=2",
    // Synth pad
    "pad=5 new=3 age=3 fantasia=6 bell=1 synth=1", "pad=6 warm=6 soft=3 analog=1 synth=1",
    "pad=4 polysynth=6 poly=4 analog=2 synth=1", "pad=5 choir=5 space=2 itopia=3 voice=2",
    "pad=5 bowed=6 glass=4", "pad=5 metal=5 metallic=6", "pad=5 halo=7 air=1",
    "pad=5 sweep=7 resonance=1",
    // Synth effects
    "rain=7 ice=3 synth=1 effect=1", "soundtrack=8 track=2 pad=1", "crystal=8 bell=2",
    "atmosphere=8 guitar=1 nylon=1", "brightness=7 bright=3 bell=1 pad=1",
    "goblins=8 goblin=8 dark=1", "echo=5 echoes=6 drops=3", "sci=4 fi=3 star=3 theme=3",
    // Ethnic
    "sitar=10", "banjo=10", "shamisen=10", "koto=10", "kalimba=10", "bagpipe=10 bag=4 pipes=3",
    "fiddle=10 violin=4", "shanai=9 shenai=9 oboe=1",
    // Percussive
    "tinkle=5 bell=4", "agogo=10", "steel=4 drums=4 steeldrum=9 pan=1 guitar=-9",
    "wood=4 block=4 woodblock=9", "taiko=8 drums=2", "tom=5 melodic=4 melo=3",
    "synth=3 drums=4 electronic=2", "reverse=4 cymbal=5",
    // Sound effects: their words against are asked for here
    "fret=6 noise=5 guitar=2 effect=5", "breath=6 noise=5 effect=5",
    "seashore=9 sea=4 wave=4 effect=4", "bird=8 tweet=4 effect=4", "telephone=9 phone=6 effect=4",
    "helicopter=9 effect=4", "applause=9 effect=4", "gun=5 gunshot=8 shot=3 effect=4"};

struct KitMeaning {
    std::uint8_t program;
    std::string_view words;
};

constexpr std::string_view kStandardKit =
    "standard=7 acoustic=3 studio=3 real=2 pop=1 percussion=-6 effect=-9";

constexpr auto kKits =
    std::to_array<KitMeaning>({{8, "room=7 acoustic=2 studio=2 effect=-9"},
                               {16, "power=7 rock=5 effect=-9"},
                               {24, "electronic=7 drums=1 effect=-9"},
                               {25, "analog=7 dance=4 machine=2 electronic=2 effect=-9"},
                               {26, "dance=7 techno=4 analog=3 house=3 effect=-9"},
                               {32, "jazz=7 acoustic=1 brush=-2 effect=-9"},
                               {40, "brush=7 jazz=3 stick=-3 effect=-9"},
                               {48, "orchestra=7 symphony=7 symphonic=7 classical=4 effect=-9"},
                               {56, "effect=9"}});

} // namespace

std::string_view MeaningOfProgram(std::uint8_t program) {
    return kPrograms[program & 0x7FU];
}

std::string_view MeaningOfKit(std::uint8_t program) {
    for (const KitMeaning& kit : kKits) {
        if (kit.program == (program & 0x7F)) {
            return kit.words;
        }
    }
    return kStandardKit;
}

std::string_view WordsAgainst() {
    return "mega=-30 effect=-5 hit=-3 menu=-9 loop=-9 beat=-5 groove=-5 arp=-7 seq=-6 phrase=-9 "
           "noise=-5 demo=-6 split=-5 layer=-3 combination=-4 fall=-5 gliss=-5 shake=-5";
}

} // namespace tracksmith::instruments
