// Makes rows of a scanned tree.
#pragma once

#include <string_view>
#include <vector>

#include "rows/Reading.h"
#include "rows/Row.h"
#include "tree/NodePlaces.h"
#include "tree/Parse.h"

namespace plugincs {

/// Appends the rows of the parse, whose tree was made of the reading of the source, and whose nodes
/// stand at the places. Texts are kept in the parse's memory. Throws std::bad_alloc.
void MakeRows(std::string_view source, const Reading& reading, const NodePlaces& places,
              Parse& parse, std::vector<Row>& rows);

}  // namespace plugincs
