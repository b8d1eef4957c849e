#include "process/ModuleState.h"

std::int32_t objectCount = 1;
std::int32_t currentIndex = 0;
std::string chunk;
std::string startPath = "/usr/share/samples/Sample.cs";
std::vector<plugincs::ObjectBranch*> AllBranches;

char* returnResult = nullptr;
char* resPtr = nullptr;
