// Sources for the benchmarks: text like real code, and hostile shapes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// About `size` bytes of C#-like source: namespaces, classes, members and statements with the
/// comments, literals, attributes and directives that real files have. Deterministic.
std::string GenerateSource(std::size_t size);

/// A hostile text that repeats one thing, of about `size` bytes.
struct Shape {
    const char* name;
    std::string (*generate)(std::size_t size);
};

const std::vector<Shape>& HostileShapes();
