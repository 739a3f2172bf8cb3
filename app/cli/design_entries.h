#pragma once

#include <set>
#include <string>

#include "app/cli/arguments.h"
#include "app/cli/cli_dialogs.h"
#include "model/design.h"
#include "model/design_form.h"
#include "model/design_reporter.h"

namespace varo::cli {

// The options that stand for the design screen's entries (and the session file to start from).
extern const std::set<std::string> kDesignEntryOptions;

// The design screen's entries, held as texts.
using DesignFields = TextFields<DesignForm>;

// What the design screen runs when it opens (with the design file of --open, where the command
// takes one), then the options typed into its entries, Accept and the generator entry: the design
// the options describe, its messages on `dialogs`. False when the design file could not be taken
// (reported).
bool EnterDesign(Design& design, DesignFields& form, CliDialogs& dialogs, DesignReporter& reporter,
                 const Arguments& args);

}  // namespace varo::cli
