#pragma once

#include <string>

namespace plugincs {

/// The same file under one name, however it was given: without "./", "//" and a slash at the end.
/// A path with a ".." may lead anywhere by way of links, and stays as it is.
std::string NormalPath(const std::string& path);

}  // namespace plugincs
