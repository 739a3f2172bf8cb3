#include <iostream>

#include "app/cli/cli.h"

int main(int argc, char** argv) {
    return varo::cli::Run({argv + 1, argv + argc}, std::cout, std::cerr);
}
