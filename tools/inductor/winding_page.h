#pragma once

#include <array>
#include <optional>
#include <string>

#include "platform/dialogs.h"
#include "platform/print_document.h"
#include "tools/inductor/coil.h"

namespace varo {

// Each computed winding (slot 0 L1, slot 1 L2) on one page, in the unit it was shown in.
PrintDocument WindingDataDocument(const std::array<std::optional<CoilState>, 2>& windings,
                                  const std::string& date);

// The winding page handed to the dialogs' print path. Returns true when the page went out.
bool PrintWindingData(const std::array<std::optional<CoilState>, 2>& windings, Dialogs& dialogs);

}  // namespace varo
