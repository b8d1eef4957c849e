// Sources for the benchmarks: text that is built like real code, and shapes that are not.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// About `size` bytes of C#-like source: namespaces, classes, members and statements with the
/// comments, literals, attributes and directives that real files have. The same for every call.
std::string GenerateSource(std::size_t size);

/// A hostile text that repeats one thing over and over.
struct Shape {
    const char* name;
    std::string (*generate)(std::size_t size);
};

const std::vector<Shape>& HostileShapes();
