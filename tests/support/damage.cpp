#include "damage.h"
#include <cstdlib>

int damagedFiles(int everyDay) {
    const char* files = getenv("ZEMVOLT_DAMAGED");
    return files ? atoi(files) : everyDay;
}

unsigned damageSeed(unsigned everyDay) {
    const char* seed = getenv("ZEMVOLT_SEED");
    return seed ? strtoul(seed, nullptr, 10) : everyDay;
}
