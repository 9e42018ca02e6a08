#include <cstdio>

int main()
{
    std::printf("Tallyvox %s\n", TALLYVOX_VERSION);
    return 0;
}
