#pragma once

#include <gtest/gtest.h>

#include <complex>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace varo::testing {

inline bool NgspiceIsInstalled() {
    return std::system("command -v ngspice > /dev/null") == 0;
}

// Runs ngspice on `net.cir` in `folder` and returns every variable of its AC analysis, from its
// ASCII raw file (strtod takes the subnormal numbers ngspice may write).
inline std::map<std::string, std::vector<std::complex<double>>> Simulate(const TempFolder& folder) {
    EXPECT_EQ(std::system(("cd " + folder.str() +
                           " && SPICE_ASCIIRAWFILE=1 ngspice -b -r ac.raw net.cir > log 2>&1")
                              .c_str()),
              0);
    const std::string raw = ReadBytes(folder.File("ac.raw"));
    std::istringstream in(raw.substr(raw.find("\nVariables:") + 11));
    std::vector<std::string> names;  // a line each: index, name, kind
    for (std::string line; std::getline(in, line) && line != "Values:";) {
        std::istringstream fields(line);
        std::string index, name;
        if (fields >> index >> name) names.push_back(name);
    }
    std::map<std::string, std::vector<std::complex<double>>> variables;
    for (std::string index, pair; in >> index;) {
        for (const std::string& name : names) {
            in >> pair;
            char* imaginary = nullptr;
            const double re = std::strtod(pair.c_str(), &imaginary);
            variables[name].push_back({re, std::strtod(imaginary + 1, nullptr)});
        }
    }
    return variables;
}

}  // namespace varo::testing
