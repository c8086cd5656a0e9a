#pragma once

#include "util/error.h"
#include "util/error_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

/// Checks that the messages of every layer's error kinds must pass.
namespace orrery::test {

/// All values of an enumeration from 0 to `last`.
template <typename Kind> std::vector<Kind> KindsUpTo(Kind last)
{
    std::vector<Kind> kinds;
    for (int value = 0; value <= static_cast<int>(last); ++value)
        kinds.push_back(static_cast<Kind>(value));
    return kinds;
}

/// Each kind has its own message, with and without a cause. Kinds in `passedOn` show only the
/// cause.
template <typename Kind> void ExpectSentences(Kind last, const std::vector<Kind>& passedOn)
{
    std::set<std::string> texts;
    for (const Kind kind : KindsUpTo(last)) {
        const std::string cause = "cause " + std::to_string(static_cast<int>(kind)) + '.';
        const std::string text = util::ErrorText(util::Error(kind, "Desk.xlsx", cause));
        EXPECT_GT(text.size(), 7U) << cause;
        EXPECT_TRUE(text.ends_with('.') || text.ends_with('?')) << text;
        EXPECT_EQ(text.find(".."), std::string::npos) << text;
        EXPECT_TRUE(texts.insert(text).second) << "twice: " << text;
        if (std::find(passedOn.begin(), passedOn.end(), kind) != passedOn.end()) {
            EXPECT_EQ(text, cause);
            continue;
        }
        const std::string bare = util::ErrorText(util::Error(kind, "Desk.xlsx"));
        EXPECT_TRUE(bare.ends_with('.')) << bare;
        EXPECT_EQ(bare.find(": ."), std::string::npos) << bare;
    }
}

inline void ExpectSubject(const util::AnyErrorKind& kind)
{
    const std::string text = util::ErrorText(util::Error(kind, "Desk.xlsx"));
    EXPECT_NE(text.find("\"Desk.xlsx\""), std::string::npos) << text;
}

inline void ExpectNoEmptyName(const util::AnyErrorKind& kind)
{
    const std::string text = util::ErrorText(util::Error(kind, "", "cause"));
    EXPECT_EQ(text.find("\"\""), std::string::npos) << text;
}

} // namespace orrery::test
