#pragma once

#include <string>

#include "tree/ObjectBranch.h"

/// Gives the record its final kind name, and with it the simple name of a function, the tag of a
/// variable declaration, or the bare name of a class as its contents. `branchType` stays. The kind
/// of the record's parent is read from the tree, where it is still the builder's, and not from the
/// parent's own record. A root's record keeps its kind. `functionNameStore` receives what the
/// record's `simpleFunctionName` points at, and must stay as it is while the record is in use.
void ClassifyRecord(ObjectBranch& record, std::string& functionNameStore);
