// What a process holds: memory, GDI objects, kernel handles; taken so that two moments can be
// compared.
#pragma once

#include <cstdint>
#include <string>

struct Figures {
    uint64_t nHeapBlocks = 0; // blocks in use in all heaps of the process
    uint64_t nHeapBytes = 0;
    uint64_t nPrivateBytes = 0;
    uint32_t nPens = 0;   // how many pens can still be made: less by one for each GDI object alive
    uint64_t nHandle = 0; // the number that the next kernel handle gets
};

// What the process holds now. Leaves everything as it was.
Figures TakeFigures();

// Makes each kind of leak on purpose, sees it in the figures and takes it back: "" when all were
// seen, else what this system cannot measure.
std::string BlindSpot();

struct Tolerance {
    uint64_t nHeapBlocks;
    uint64_t nHeapBytes;
    uint64_t nPrivateBytes;
};

// By what the later figures exceed the earlier ones by more than is tolerated, "" for nothing. Pens
// and handles have no tolerance.
std::string Growth(const Figures& before, const Figures& after, const Tolerance& tolerance);
std::string FiguresText(const Figures& figures);
