#pragma once

#include <vector>

#include "base/text.h"

#include "player/output_ports.h"

class QComboBox;

namespace tracksmith::forms {

/// How an output stands, in a word or two.
const Text& PortStateWord(const player::OutputDevice& output);

/// Fills a choice with the outputs: shown with their state, which differs in shape and in words,
/// the product name as each item's data.
void FillWithOutputs(QComboBox& choice, const std::vector<player::OutputDevice>& outputs,
                     Language language);

} // namespace tracksmith::forms
