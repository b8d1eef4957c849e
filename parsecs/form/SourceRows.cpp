#include "parsecs/form/SourceRows.h"

#include <utility>

namespace plugincs {

FileRows RowsOf(ReadSource source) {
    return FileRows(std::move(source.path), std::move(source.text), source.traces);
}

FileOutcome OutcomeOf(const FileRows& file) {
    FileOutcome outcome;
    if (file.stoppedAt() > 0) outcome.kind = FileOutcome::Kind::StoppedEarly;
    outcome.line = file.stoppedAt();
    outcome.cuts = file.cutAt().size();
    if (outcome.cuts > 0) outcome.cutLine = file.cutAt().front();
    return outcome;
}

}  // namespace plugincs
