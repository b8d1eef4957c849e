// Which files a run with an output folder parses, and where each text goes.
#pragma once

#include <string>
#include <vector>

#include "host/Failure.h"

struct Job {
    std::string input;
    std::string output;
};

struct FolderPlan {
    std::vector<Job> jobs;
    std::vector<Failure> failures;
};

/// The files of a folder (all its *.cs, sorted, links to folders not followed) keep their paths
/// below it; a file that is named itself keeps the path that names it. Of two inputs with the same
/// output the second is a failure.
FolderPlan PlanFolder(const std::vector<std::string>& inputs, const std::string& output);
