// The kinds of rows, for tables that number them.
#pragma once

#include <array>

#include "tree/ObjectBranch.h"

namespace plugincs {

/// All kinds that a row may have.
inline constexpr std::array kRowKinds{
    KindName::kFilepath,     KindName::kInclude,         KindName::kContainer, KindName::kLine,
    KindName::kDefine,       KindName::kLogic,           KindName::kFunction,  KindName::kClass,
    KindName::kNamespace,    KindName::kSymbol,          KindName::kLoop,      KindName::kClassVar,
    KindName::kPreprocessor, KindName::kNullParentError,
};

}  // namespace plugincs
