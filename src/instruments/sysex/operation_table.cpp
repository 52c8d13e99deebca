#include "instruments/sysex/operation_table.h"

#include <algorithm>
#include <array>

#include "instruments/capabilities.h"
#include "instruments/catalogue_table.h"
#include "instruments/sysex/insert_gs.h"
#include "instruments/sysex/insert_gs_effects.h"
#include "instruments/sysex/insert_outputs.h"
#include "instruments/sysex/insert_reset.h"
#include "instruments/sysex/insert_setup.h"
#include "instruments/sysex/remove_sysex.h"
#include "instruments/sysex/search_sysex.h"
#include "instruments/sysex/texts.h"

namespace tracksmith::instruments {
namespace {

constexpr SysexOperation kRemoveGm{"RemoveGMSysex", RemoveGMSysex};
constexpr SysexOperation kRemoveGm2{"RemoveGM2Sysex", RemoveGM2Sysex};
constexpr SysexOperation kRemoveRoland{"RemoveRolandSysex", RemoveRolandSysex};
constexpr SysexOperation kRemoveRolandGs{"RemoveRolandGSSysex", RemoveRolandGSSysex};
constexpr SysexOperation kRemoveKetron{"RemoveKetronSysex", RemoveKetronSysex};
constexpr SysexOperation kRemoveBigKetron{"RemoveBigKetronSysex", RemoveBigKetronSysex};
constexpr SysexOperation kRemoveYamaha{"RemoveYamahaSysex", RemoveYamahaSysex};
constexpr SysexOperation kRemoveYamahaDsp{"RemoveYamahaDSPSysex", RemoveYamahaDSPSysex};
constexpr SysexOperation kRemoveYamahaMasterEq{"RemoveYamahaMasterEQSysex",
                                               RemoveYamahaMasterEQSysex};
constexpr SysexOperation kRemoveYamahaVocalHarmony{"RemoveYamahaVocalHarmonySysex",
                                                   RemoveYamahaVocalHarmonySysex};

constexpr SysexOperation kInsertGm{"InsertGMSysex", InsertGMSysex};
constexpr SysexOperation kInsertGm2{"InsertGM2Sysex", InsertGM2Sysex};
constexpr SysexOperation kInsertXg{"InsertXGSysex", InsertXGSysex};
constexpr SysexOperation kInsertKn6000{"InsertKN6000Sysex", InsertKN6000Sysex};
constexpr SysexOperation kInsertGs{"InsertGSSysex", InsertGSSysex};
constexpr SysexOperation kInsertGsDelay{"InsertGSDelaySysex", InsertGSDelaySysex};
constexpr SysexOperation kInsertGsReverb{"InsertGSReverbSysex", InsertGSReverbSysex};
constexpr SysexOperation kInsertMbMusic{"InsertMBMusicSysex", InsertMBMusicSysex};
constexpr SysexOperation kInsertMp11{"InsertMP11Sysex", InsertMP11Sysex};
constexpr SysexOperation kInsertMp11Delay{"InsertMP11DelaySysex", InsertMP11DelaySysex};
constexpr SysexOperation kInsertKetron{"InsertKetronSysex", InsertKetronSysex};
constexpr SysexOperation kInsertKetronSd1000{"InsertKetronSD1000Sysex", InsertKetronSD1000Sysex};
constexpr SysexOperation kInsertLimex{"InsertLimexSysex", InsertLimexSysex};
constexpr SysexOperation kInsertMotifEs{"InsertMotifESInsertsSysex", InsertMotifESInsertsSysex};
constexpr SysexOperation kInsertMotifXf{"InsertMotifXFInsertsSysex", InsertMotifXFInsertsSysex};
constexpr SysexOperation kInsertMotifXs{"InsertMotifXSInsertsSysex", InsertMotifXSInsertsSysex};
constexpr SysexOperation kInsertSonicCell{"InsertSonicCellReverbLevelSysex",
                                          InsertSonicCellReverbLevelSysex};
constexpr SysexOperation kInsertIntegra7{"InsertIntegra7OutputsSysex", InsertIntegra7OutputsSysex};
constexpr SysexOperation kInsertMotifXsOutputs{"InsertMotifXSOutputsSysex",
                                               InsertMotifXSOutputsSysex};

constexpr SysexOperation kSearchKorg{"SearchKorgPartEQSysex", SearchKorgPartEQSysex};
constexpr SysexOperation kSearchBk9{"SearchRolandBK9PartEQSysex", SearchRolandBK9PartEQSysex};
constexpr SysexOperation kSearchIntegra7{"SearchRolandIntegra7PartEQSysex",
                                         SearchRolandIntegra7PartEQSysex};
constexpr SysexOperation kSearchOrganFlute{"SearchOrganFluteSysex", SearchOrganFluteSysex};
constexpr SysexOperation kSearchScInsert{"SearchRolandSCFXInsertSysex",
                                         SearchRolandSCFXInsertSysex};
constexpr SysexOperation kSearchYamahaInsert{"SearchYamahaInsertionSysex",
                                             SearchYamahaInsertionSysex};
constexpr SysexOperation kSearchMotifEs{"SearchMotifESSysex", SearchMotifESSysex};
constexpr SysexOperation kSearchMotifXf{"SearchMotifXFSysex", SearchMotifXFSysex};
constexpr SysexOperation kSearchMotifXs{"SearchMotifXSSysex", SearchMotifXSSysex};

using Options = SysexOptions;

constexpr StepCondition kGmBeforeGs{[](const Options& o) { return o.gmBeforeGs; },
                                    texts::kWithGmBeforeGs};
constexpr StepCondition kKorgEq{[](const Options& o) { return o.korgPartEqualizer; },
                                texts::kWithKorgEqualizer};
constexpr StepCondition kDsps{[](const Options& o) { return o.yamahaDsps; },
                              texts::kWithYamahaDsps};
constexpr StepCondition kNoMasterEq{[](const Options& o) { return !o.yamahaMasterEq; },
                                    texts::kWithoutMasterEq};
constexpr StepCondition kNoVocalHarmony{
    [](const Options& o) { return !o.yamahaVocalHarmony || o.yamahaAutoVocalHarmony; },
    texts::kWithoutVocalHarmony};
constexpr StepCondition kMotifDsps{[](const Options& o) { return o.motifDsps; },
                                   texts::kWithMotifDsps};
constexpr StepCondition kMotifGmReset{[](const Options& o) { return !o.motifWithoutGmReset; },
                                      texts::kUnlessWithoutGmReset};

template <Capability capability>
bool Has(const Instrument& instrument) {
    return HasCapability(instrument.name, capability);
}

bool HasOrganFlutes(const Instrument& instrument) {
    constexpr auto kIds = std::to_array<InstrumentId>({54, 62, 74, 80, 87, 97, 106, 108});
    return std::ranges::find(kIds, instrument.id) != kIds.end();
}

using Step = OperationStep;

constexpr auto kGmSteps = std::to_array<Step>(
    {{kRemoveGm2}, {kRemoveRoland}, {kRemoveKetron}, {kRemoveYamaha}, {kInsertGm}});
constexpr auto kScSteps = std::to_array<Step>({{kRemoveGm},
                                               {kRemoveGm2},
                                               {kRemoveKetron},
                                               {kRemoveYamaha},
                                               {kInsertGm, &kGmBeforeGs},
                                               {kRemoveRolandGs, &kGmBeforeGs},
                                               {kInsertGs},
                                               {kInsertGsDelay},
                                               {kInsertGsReverb, &kGmBeforeGs},
                                               {kSearchScInsert}});
constexpr auto kSgxSteps =
    std::to_array<Step>({{kRemoveGm}, {kRemoveGm2}, {kRemoveKetron}, {kRemoveYamaha}, {kInsertGs}});
constexpr auto kJm8Steps = std::to_array<Step>(
    {{kRemoveGm}, {kRemoveGm2}, {kRemoveKetron}, {kRemoveYamaha}, {kInsertGs}, {kInsertGsDelay}});
constexpr auto kXgSteps = std::to_array<Step>(
    {{kRemoveGm},
     {kRemoveGm2},
     {kRemoveRoland},
     {kRemoveKetron},
     {kInsertXg},
     {kRemoveYamahaMasterEq, &kNoMasterEq, Has<Capability::YamahaMasterEq>},
     {kRemoveYamahaVocalHarmony, &kNoVocalHarmony, Has<Capability::YamahaVocalHarmony>},
     {kSearchOrganFlute, &kDsps, HasOrganFlutes},
     {kSearchYamahaInsert, &kDsps, Has<Capability::YamahaDsps>}});
constexpr auto kKetronSteps = std::to_array<Step>({{kRemoveGm},
                                                   {kRemoveGm2},
                                                   {kRemoveRoland},
                                                   {kRemoveYamaha},
                                                   {kRemoveBigKetron},
                                                   {kInsertKetron}});
constexpr auto kSd1000Steps = std::to_array<Step>({{kRemoveGm},
                                                   {kRemoveGm2},
                                                   {kRemoveRoland},
                                                   {kRemoveYamaha},
                                                   {kRemoveBigKetron},
                                                   {kInsertKetronSd1000}});
constexpr auto kGenesysSteps = std::to_array<Step>(
    {{kRemoveGm}, {kRemoveGm2}, {kRemoveRoland}, {kRemoveKetron}, {kRemoveYamaha}});
constexpr auto kGm2Steps = std::to_array<Step>(
    {{kRemoveGm}, {kRemoveRoland}, {kRemoveKetron}, {kRemoveYamaha}, {kInsertGm2}});
constexpr auto kKorgSteps = std::to_array<Step>({{kRemoveGm},
                                                 {kRemoveRoland},
                                                 {kRemoveKetron},
                                                 {kRemoveYamaha},
                                                 {kInsertGm2},
                                                 {kSearchKorg, &kKorgEq}});

constexpr std::array<Step, 8> MotifSteps(SysexOperation insert, SysexOperation search) {
    return {{{kRemoveGm},
             {kRemoveGm2},
             {kRemoveRoland},
             {kRemoveKetron},
             {kRemoveYamahaDsp},
             {insert},
             {kInsertGm, &kMotifGmReset},
             {search, &kMotifDsps}}};
}

constexpr auto kMotifEsSteps = MotifSteps(kInsertMotifEs, kSearchMotifEs);
constexpr auto kMotifXsSteps = std::to_array<Step>({{kRemoveGm},
                                                    {kRemoveGm2},
                                                    {kRemoveRoland},
                                                    {kRemoveKetron},
                                                    {kRemoveYamahaDsp},
                                                    {kInsertMotifXs},
                                                    {kInsertGm, &kMotifGmReset},
                                                    {kInsertMotifXsOutputs},
                                                    {kSearchMotifXs, &kMotifDsps}});
constexpr auto kMotifXfSteps = MotifSteps(kInsertMotifXf, kSearchMotifXf);

// Removes all families and puts one set-up.
constexpr std::array<Step, 6> CleanSteps(SysexOperation insert) {
    return {
        {{kRemoveGm}, {kRemoveGm2}, {kRemoveRoland}, {kRemoveKetron}, {kRemoveYamaha}, {insert}}};
}

constexpr auto kSonicCellSteps = CleanSteps(kInsertSonicCell);
constexpr auto kKn6000Steps = CleanSteps(kInsertKn6000);
constexpr auto kLimexSteps = CleanSteps(kInsertLimex);
constexpr auto kMp11Steps = std::to_array<Step>({{kRemoveGm},
                                                 {kRemoveGm2},
                                                 {kRemoveKetron},
                                                 {kRemoveRoland},
                                                 {kRemoveYamaha},
                                                 {kInsertMp11},
                                                 {kInsertMp11Delay}});
constexpr auto kMbMusicSteps = std::to_array<Step>(
    {{kRemoveGm}, {kRemoveRoland}, {kRemoveKetron}, {kRemoveYamaha}, {kInsertMbMusic}});
constexpr auto kIntegra7Steps = std::to_array<Step>({{kRemoveGm},
                                                     {kRemoveGm2},
                                                     {kRemoveKetron},
                                                     {kRemoveYamaha},
                                                     {kInsertIntegra7},
                                                     {kSearchIntegra7}});
constexpr auto kBk9Steps = std::to_array<Step>(
    {{kRemoveGm}, {kRemoveGm2}, {kRemoveKetron}, {kRemoveYamaha}, {kSearchBk9}});

constexpr auto kGmIds = std::to_array<InstrumentId>({0, 21, 23, 24, 27, 29, 35, 98, 99, 105});
constexpr auto kScIds = std::to_array<InstrumentId>({1, 2, 3, 4, 15, 17, 22, 38, 83});
constexpr auto kSgxIds = std::to_array<InstrumentId>({12});
constexpr auto kJm8Ids = std::to_array<InstrumentId>({60});
constexpr auto kXgIds = std::to_array<InstrumentId>(
    {5, 6, 7, 8, 9, 18, 19, 31, 33, 34, 41, 54, 59, 62, 70, 74, 80, 87, 97, 106, 108});
constexpr auto kKetronIds =
    std::to_array<InstrumentId>({10, 11, 20, 30, 32, 40, 46, 47, 49, 50, 55});
constexpr auto kSd1000Ids = std::to_array<InstrumentId>({73, 76, 79, 84, 92, 101, 104});
constexpr auto kGenesysIds = std::to_array<InstrumentId>({13, 28});
constexpr auto kGm2Ids = std::to_array<InstrumentId>({14, 16, 25, 36, 37, 48, 61, 78});
constexpr auto kKorgIds = std::to_array<InstrumentId>({42, 43, 52, 63, 64, 75, 82, 90, 91, 103});
constexpr auto kMotifEsIds = std::to_array<InstrumentId>({26});
constexpr auto kMotifXsIds = std::to_array<InstrumentId>({51});
constexpr auto kMotifXfIds = std::to_array<InstrumentId>({69});
constexpr auto kSonicCellIds = std::to_array<InstrumentId>({45, 68});
constexpr auto kKn6000Ids = std::to_array<InstrumentId>({53});
constexpr auto kLimexIds = std::to_array<InstrumentId>(
    {44, 56, 57, 58, 65, 66, 77, 81, 85, 86, 88, 89, 93, 94, 95, 96, 107});
constexpr auto kMp11Ids = std::to_array<InstrumentId>({67});
constexpr auto kMbMusicIds = std::to_array<InstrumentId>({100});
constexpr auto kIntegra7Ids = std::to_array<InstrumentId>({71});
constexpr auto kBk9Ids = std::to_array<InstrumentId>({72});

struct Group {
    std::span<const InstrumentId> instruments;
    std::span<const Step> steps;
    DrumWay drums = DrumWay::None;
};

// Instruments that take songs as they are.
constexpr auto kNoIds = std::to_array<InstrumentId>({39, 102});

constexpr auto kGroups = std::to_array<Group>({{kGmIds, kGmSteps},
                                               {kScIds, kScSteps, DrumWay::PartGs},
                                               {kSgxIds, kSgxSteps, DrumWay::PartGs},
                                               {kJm8Ids, kJm8Steps, DrumWay::PartGs},
                                               {kXgIds, kXgSteps, DrumWay::BankXg},
                                               {kKetronIds, kKetronSteps},
                                               {kSd1000Ids, kSd1000Steps},
                                               {kGenesysIds, kGenesysSteps},
                                               {kGm2Ids, kGm2Steps, DrumWay::BankGm2},
                                               {kKorgIds, kKorgSteps, DrumWay::BankGm2},
                                               {kMotifEsIds, kMotifEsSteps},
                                               {kMotifXsIds, kMotifXsSteps},
                                               {kMotifXfIds, kMotifXfSteps},
                                               {kSonicCellIds, kSonicCellSteps},
                                               {kKn6000Ids, kKn6000Steps},
                                               {kLimexIds, kLimexSteps},
                                               {kMp11Ids, kMp11Steps, DrumWay::PartGs00},
                                               {kMbMusicIds, kMbMusicSteps, DrumWay::PartGs00},
                                               {kIntegra7Ids, kIntegra7Steps},
                                               {kBk9Ids, kBk9Steps, DrumWay::PartGs}});

constexpr bool IsInOneGroup(const Instrument& instrument) {
    auto groups = std::ranges::count(kNoIds, instrument.id);
    for (const Group& group : kGroups) {
        groups += std::ranges::count(group.instruments, instrument.id);
    }
    return groups == 1;
}

static_assert(std::ranges::all_of(kCatalogue, IsInOneGroup));

// Null for an instrument in none.
const Group* GroupOf(InstrumentId id) {
    const auto* group = std::ranges::find_if(kGroups, [id](const Group& candidate) {
        return std::ranges::find(candidate.instruments, id) != candidate.instruments.end();
    });
    return group == kGroups.end() ? nullptr : group;
}

} // namespace

DrumWay DrumWayOf(InstrumentId id) {
    const Group* group = GroupOf(id);
    return group == nullptr ? DrumWay::None : group->drums;
}

std::span<const OperationStep> StepsOf(InstrumentId id) {
    const Group* group = GroupOf(id);
    return group == nullptr ? std::span<const OperationStep>() : group->steps;
}

std::vector<OperationStep> OperationsOf(InstrumentId id) {
    std::vector<OperationStep> operations;
    const Instrument* instrument = FindInstrument(id);
    if (instrument != nullptr) {
        std::ranges::copy_if(StepsOf(id), std::back_inserter(operations), [=](const Step& step) {
            return step.suits == nullptr || step.suits(*instrument);
        });
    }
    return operations;
}

} // namespace tracksmith::instruments
