#pragma once

#include <string>
#include <string_view>

#include "core/design_state.h"

namespace varo {

// ---- Entry text ---------------------------------------------------------------------------

// Reads an entry with engineering suffixes (p n u m k M G, E exponent, "," as decimal point).
// The text is trimmed of blanks and cut to 12 characters, and that text is written back to the
// caller. The value is rounded to single precision and clamped to -1e10..1e10. Never fails:
// unusable characters are dropped and an empty result gives 0.
float ParseEngNumber(std::string& text);
void ParseEngNumber(std::string& text, float& value);

// ---- Display text with engineering prefixes ---------------------------------------------

std::string FormatEng(float x);     // plot axis labels: "10K", "-20  "
std::string FormatHz(float x);      // frequencies: " 3.5M ", " 500Hz", "0.0 "
std::string FormatHenry(float x);   // inductances: "2.2uH", "470nH", "" for 0
std::string FormatFarad(float x);   // capacitances: "0.015uF", "4700pF", "" for 0
std::string FormatNumber(float x);  // everything else: "1.234k", "50 ", " 0.0000  "

// Renders v with a "#"-pattern ("##.###", ".######"): "#" digits shown only where significant,
// rounded half away from zero at the last shown place, "." as separator, no leading zero below 1,
// and the "." kept on whole numbers ("12.").
std::string FormatPattern(double v, std::string_view pattern);

// ---- General number forms ----------------------------------------------------------------
// All forms: at most 7 significant digits for a single (15 for a double), no trailing zeros,
// no "." on whole numbers, exponent form "1.4E+07" once the integer part needs more digits than
// that, and also below 1E-04 in magnitude ("2.2E-06"), so tiny values stay exact and readable.
// The decimal separator is always ".", whatever the locale.

// The shortest plain text: "0.5", "12", "-3", "1.5E+07" (leading zero, no sign blank).
std::string PlainText(float v);
std::string PlainText(double v);

// The "write" form of the last-session file: no leading zero, no sign blank: ".5", "1.5E+07".
std::string WriteForm(float v);

// S(): the number-to-text conversion inside concatenated texts: " 3750", "-16", " .5".
std::string SignedText(float v);
std::string SignedText(double v);
std::string SignedText(int v);

// N(): the print form of a number item: S() and a trailing blank: " 1000 ", "-60 ", " .5 ".
std::string PrintForm(float v);
std::string PrintForm(double v);
std::string PrintForm(int v);

// Q(): the file form: S() with every "," turned into ".", then a trailing blank.
std::string FileForm(float v);
std::string FileForm(double v);

// ---- Plot grid -----------------------------------------------------------------------------

// Fills gridFrequencies / gridLastIndex with 1, 1.5, 2, 3 ... 9 per decade between the sweep
// limits. More than 2000 entries is an IndexOutOfRange fault.
void BuildLogGrid(DesignState& state);

}  // namespace varo
