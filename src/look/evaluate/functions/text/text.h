#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// LEFT, MID, SUBSTITUTE ...: pieces of texts. Characters are counted as Excel does, in UTF-16.
const FunctionList& TextFunctions();
/// CHAR, UPPER, CLEAN ...: texts character by character.
const FunctionList& CharacterFunctions();
/// TEXT, VALUE, FIXED ...: texts of values, and values of texts.
const FunctionList& TextValueFunctions();

} // namespace orrery::formula
