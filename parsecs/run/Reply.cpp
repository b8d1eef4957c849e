#include "parsecs/run/Reply.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

#include "parsecs/input/Source.h"

namespace {

Reply TryReply(const FoundFile& file, const Form& form, Traces traces) {
    try {
        ReadSource source = ReadFound(file);
        source.traces = traces;
        return {Reply::Kind::Made, form.Make(std::move(source)), {}};
    } catch (const ReadFailure& failure) {
        return {Reply::Kind::Unreadable, {}, failure.what()};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::length_error&) {
        return {Reply::Kind::Failed, {}, "too large"};
    } catch (const std::exception& error) {
        return {Reply::Kind::Failed, {}, error.what()};
    }
}

}  // namespace

Reply ReplyTo(const FoundFile& file, const Form& form, Traces traces) noexcept {
    try {
        return TryReply(file, form, traces);
    } catch (const std::bad_alloc&) {
        return {Reply::Kind::Failed, {}, "out of memory"};  // short enough to need none
    } catch (...) {
        return {Reply::Kind::Failed, {}, "unknown reason"};
    }
}
