// The texts of the folder's .sql files.
#pragma once

extern const char* const kSchemaSql;
extern const char* const kSearchSql;
extern const char* const kUpdateSql;
