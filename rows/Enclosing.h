// The declarations around each row, on the way through the rows.
#pragma once

#include <vector>

#include "rows/Row.h"

namespace plugincs {

class Enclosing {
  public:
    /// Of one file's, which must outlive this.
    explicit Enclosing(const std::vector<Row>& rows) : rows_(rows) {}

    /// The declaration whose name ends the scope of the row: a namespace without braces too. Null
    /// where there is none. Of the names in one declaration none is around the others. Rows are
    /// asked for in their order, all of them.
    const Row* Of(const Row& row);

  private:
    struct Entry {
        const Row* row;
        const Row* around;
        std::int32_t last;  // the last row that it is around
    };

    const std::vector<Row>& rows_;
    std::vector<Entry> around_;
};

}  // namespace plugincs
