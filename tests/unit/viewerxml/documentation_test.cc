// The pages about the two formats tell every element and attribute, and their examples are right.

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

#include "backend/platform/file_system.h"
#include "backend/viewerxml/response_spec.h"
#include "tests/unit/viewerxml/xml_judge.h"

namespace {

using vexa::testing::complaintsAbout;
using vexa::testing::Schema;

std::string contentOf(const std::string& path) {
    std::string content;
    const vexa::FileResult result =
        vexa::FileSystem::current().read(VEXA_SOURCE_FOLDER "/" + path, content, 1 << 20);
    EXPECT_TRUE(result) << path << ": " << result.reason;
    return content;
}

std::set<std::string> allMatches(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

/// What the page names between backquotes; names in one pair are divided by blanks.
std::set<std::string> namesOf(const std::string& page) {
    std::set<std::string> names;
    for (const std::string& quoted : allMatches(page, "`([^`\n]*)`")) {
        for (const std::string& name : allMatches(quoted, "([A-Za-z]+)")) names.insert(name);
    }
    return names;
}

/// The indented blocks that begin with an element.
std::set<std::string> examplesOf(const std::string& page) {
    return allMatches(page, "\n\n((?:    [^\n]*\n)+)");
}

void expectEveryName(const std::string& page, const std::string& schema) {
    const std::set<std::string> documented = namesOf(contentOf(page));
    const std::set<std::string> names =
        allMatches(contentOf(schema), "<xs:(?:element|attribute) name=\"([A-Za-z]+)\"");
    EXPECT_GT(names.size(), 5U);
    for (const std::string& name : names) {
        EXPECT_EQ(documented.count(name), 1U) << name << " is not in " << page;
    }
}

TEST(Documentation, NamesWhatTheSchemasName) {
    expectEveryName("docs/formats/export-specification.md", "schemas/export-specification.xsd");
    expectEveryName("docs/formats/export-response.md", "schemas/export-response.xsd");
}

TEST(Documentation, HasRightExamples) {
    const std::set<std::string> examples = examplesOf(contentOf("docs/formats/export-specification.md"));
    EXPECT_FALSE(examples.empty());
    for (const std::string& example : examples) {
        EXPECT_EQ(complaintsAbout(example, Schema::exportSpecification), "") << example;
    }
}

TEST(Documentation, HasRightAnswers) {
    const std::set<std::string> examples = examplesOf(contentOf("docs/formats/export-response.md"));
    EXPECT_GE(examples.size(), 2U);
    for (const std::string& example : examples) {
        EXPECT_EQ(complaintsAbout(example, Schema::exportResponse), "") << example;
        vexa::ResponseSpec response;
        EXPECT_TRUE(response.processResponse(example)) << example << response.getParserError();
    }
}

}  // namespace
