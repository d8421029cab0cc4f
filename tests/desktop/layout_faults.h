#pragma once
#include <string>
#include <vector>

// What is wrong with the places of the visible controls.
struct LayoutFault {
    const char* kind;     // overlap, outside
    std::string control;  // by its name
    std::string other;    // what it overlaps or sticks out of
    int pixels;           // by how much
};

std::vector<LayoutFault> layoutFaults();
