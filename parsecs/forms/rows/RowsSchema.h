#pragma once

namespace plugincs {

/// The folder's rows.schema.json: what each line of JSON Lines may be.
extern const char* const kRowsSchema;

}  // namespace plugincs
