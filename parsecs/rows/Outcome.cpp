#include "parsecs/rows/Outcome.h"

FileOutcome OutcomeOf(const ParsedFile& file) {
    if (file.end() == Parse::End::Whole) return {};
    if (file.end() == Parse::End::Abandoned) return {FileOutcome::Kind::GivenUp, 0};
    // Behind the error stands only the list of conditional operands.
    const Row& error = file.rows()[file.rows().size() - 2];
    return {FileOutcome::Kind::StoppedEarly, error.begin.line};
}
