#include "parsecs/rows/Outcome.h"

FileOutcome OutcomeOf(const ParsedFile& file) {
    if (file.outcome() == ParsedFile::Outcome::Whole) return {};
    if (file.outcome() == ParsedFile::Outcome::GivenUp) return {FileOutcome::Kind::GivenUp, 0};
    // Behind the error stands only the list of conditional operands.
    const Row& error = file.rows()[file.rows().size() - 2];
    return {FileOutcome::Kind::StoppedEarly, error.begin.line};
}
