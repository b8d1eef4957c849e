#include "parsecs/manual/Manual.h"

std::string ManPage() { return ""; }
std::string Completion(const std::string&) { return ""; }
