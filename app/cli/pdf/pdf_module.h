#pragma once

#include <string>

#include "platform/print_document.h"

// The one entry point of the PDF module, looked up by this name once the module is loaded.
inline constexpr const char* kWritePdfSymbol = "VaroWritePdf";
using WritePdfFunction = void (*)(const varo::PrintDocument& document, const std::string& path,
                                  varo::PrintOutcome& outcome);
