#include "shell/Startup.h"

int main(int argc, char** argv)
{
    return tallyvox::runTallyvox(argc, argv);
}
