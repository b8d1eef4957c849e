#include "parsecs/run/Reply.h"

#include <exception>
#include <new>
#include <utility>

#include "parsecs/input/Source.h"
#include "parsecs/messages/Messages.h"

namespace plugincs {

namespace {

Reply TryReply(const FoundFile& file, const Form& form, Traces traces) {
    try {
        ReadSource source = ReadFound(file);
        source.traces = traces;
        return {Reply::Kind::Made, form.Make(std::move(source)), {}};
    } catch (const ReadFailure& failure) {
        return {Reply::Kind::Unreadable, {}, failure.what()};
    } catch (const std::exception& failure) {
        return {Reply::Kind::Failed, {}, std::string(ReasonOf(failure))};
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

}  // namespace plugincs
