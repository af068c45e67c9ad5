#pragma once
// Files that are damaged at random, the same ones in every run.

// How many are tried: as many as given, or as ZEMVOLT_DAMAGED says.
int damagedFiles(int everyDay);

// What the choice of damage starts from: as given, or as ZEMVOLT_SEED says.
unsigned damageSeed(unsigned everyDay);
