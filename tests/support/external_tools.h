#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace varo::testing {

// Runs a shell command line; true when it exits 0.
inline bool RunsClean(const std::string& commandLine) {
    return std::system(commandLine.c_str()) == 0;
}

// The opening of every script that uses scikit-rf. Debian's scikit-rf 0.15 still names
// numpy.complex, which numpy 1.24 dropped.
inline constexpr char kScikitRfImport[] = "import numpy as np\nnp.complex = complex\nimport skrf\n";

// A Python that has scikit-rf ($VARO_PYTHON, python3 or /usr/bin/python3), or nothing.
inline std::optional<std::string> PythonWithScikitRf() {
    const char* chosen = std::getenv("VARO_PYTHON");
    for (const std::string python : {chosen ? chosen : "python3", "/usr/bin/python3"})
        if (RunsClean(python + " -c '" + kScikitRfImport + "' > /dev/null 2>&1")) return python;
    return std::nullopt;
}

}  // namespace varo::testing
