#include "parsecs/form/Records.h"

#include <utility>

#include "parsecs/form/SourceRows.h"
#include "plugin/Pipeline.h"

namespace plugincs {

FileOutcome AppendRecords(ReadSource source, std::string& out) {
    Parse parse(source.path, source.text, source.traces);
    ParseSource(parse, "");
    if (parse.end == Parse::End::Abandoned) return {FileOutcome::Kind::GivenUp, 0};
    out += parse.result.get();
    if (parse.end == Parse::End::Whole) return {};
    // The records count lines in their own way: the true line is in the rows.
    // The rows may know better and go on; the records did not.
    const FileRows rows(std::move(source.path), std::move(source.text));
    return {FileOutcome::Kind::StoppedEarly, rows.stoppedAt()};
}

}  // namespace plugincs
