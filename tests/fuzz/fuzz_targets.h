#pragma once

#include <string_view>

namespace varo::fuzz {

// Each target feeds arbitrary bytes to one input path of the program and checks what must hold
// whatever the bytes: no crash, no undefined behaviour, results within their bounds. A broken
// rule aborts, which both libFuzzer and the corpus replay report.

// Entry text through ParseEngNumber, and the value through every formatter.
void NumberText(std::string_view bytes);
// The bytes as a last-session file.
void LastSession(std::string_view bytes);
// The bytes as an overlay file.
void Overlay(std::string_view bytes);

}  // namespace varo::fuzz
