#pragma once

namespace plugincs {

enum ExitCode { kDone = 0, kSomeFailed = 1, kUsage = 2, kNotWritten = 3 };

}  // namespace plugincs
