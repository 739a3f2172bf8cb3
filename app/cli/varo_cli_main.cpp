#include <iostream>

#include "app/cli/cli.h"
#include "platform/write_signals.h"

int main(int argc, char** argv) {
    // Before the first byte: the report on standard output may be a file under a size limit.
    varo::PrepareFileWrites();
    return varo::cli::Run({argv + 1, argv + argc}, std::cout, std::cerr);
}
