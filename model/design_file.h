#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "model/design.h"

namespace varo {

// A design kept under a name of its own: a JSON document (UTF-8, keys in a fixed order, one per
// line) that a person can read and a script can write. The last-session file stays as it is;
// this stands beside it.
inline constexpr std::string_view kDesignFileExtension = ".varo";
inline constexpr std::string_view kDesignFileFormat = "VARO design";
inline constexpr int kDesignFileVersion = 1;
// A measured antenna of the load range can carry many points; no design comes near this.
inline constexpr std::size_t kMaxDesignFileBytes = 16 * 1024 * 1024;

// The design's inputs as the last-session file keeps them.
struct SessionInputs {
    float frequency = 0;
    float plateR = 0;
    float intermediateR = 0;
    float loadR = 0;
    float piQ = 0;
    float peakSwing = 0;
    float spare = 0;
    float rfPower = 0;
    float genMultiplier = 0;
};

// Everything a design is made of: its inputs and every setting the design layer keeps.
struct DesignFile {
    SessionInputs inputs;
    std::optional<TankQ> lossQ;  // the coil Q and capacitor Q; none where no losses are asked
    std::array<std::optional<WoundCoil>, 2> woundCoils;  // L1, L2
    bool useWoundCoilQ = false;
    std::optional<BandPlanInputs> bandPlan;
    std::optional<LoadRangeRequest> loadRange;
};

// A design file that cannot be taken: what() says why, in a sentence for the user.
class DesignFileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

DesignFile DesignFileOf(const Design& design);
// Puts the file's inputs and settings into the design. The caller works the design out again
// (Design::Load), as after any change of its inputs.
void ApplyDesignFile(const DesignFile& file, Design& design);

std::string DesignFileText(const DesignFile& file);
// Throws DesignFileError: not a design file, one from a newer version, or damaged (the sentence
// names the place).
DesignFile ParseDesignFile(std::string_view text);

// Saved whole or not at all; throws FileError.
void SaveDesignFile(const Design& design, const std::string& path);
// Read without waiting (a pipe or a device is refused) and no further than the limit; throws
// FileError or DesignFileError.
DesignFile ReadDesignFile(const std::string& path);

}  // namespace varo
