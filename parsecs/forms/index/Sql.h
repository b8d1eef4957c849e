// The texts of the folder's .sql files.
#pragma once

namespace plugincs {

extern const char* const kSchemaSql;
extern const char* const kSearchSql;
extern const char* const kUpdateSql;

}  // namespace plugincs
