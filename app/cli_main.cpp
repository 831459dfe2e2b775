#include "cli/cli.h"

#include <iostream>

int main(int argc, char** argv)
{
    return rw::cli::RunCli(argc, argv, std::cout, std::cerr);
}
