// Prints one random id: what a process of its own makes first.

#include "model/uuid.h"

#include <cstdio>

int main() { return std::puts(kestrel::Uuid::random().toString().c_str()) < 0 ? 1 : 0; }
