// Files with a document and modifications of it: what each one is to change.
//
//     # What the file shows.
//     -- document --
//     {"vexaResults": 1, "items": [...]}
//     -- case: body bold --
//     <modifyEvent tables="true"><tableCells body="true" selectColumns="both" bold="true"/></modifyEvent>
//     -- changes 1,1,0 --
//     * 1/1 cells
//     -     "cells": [1, 2]}
//     +     "cells": [{"value": 1, "bold": true}, {"value": 2, "bold": true}]}
//
// Each case begins with the document anew. The counts are selected, modified, deleted. A line with a star is
// what the plan says of an item (group/number, its changes, and why something does not apply), one with an
// exclamation mark a complaint of the reply; the others are the lines of the document, as JSON, that go and
// come.
#pragma once

#include <string>
#include <vector>

namespace vexa::frontend {

struct ModificationCase {
    std::string name;
    std::string request;  ///< the groups alone
    std::string changes;  ///< with the line that begins them
};

struct CaseFile {
    std::string comment;
    std::string document;
    std::vector<ModificationCase> cases;
};

/// A malformed file fails the test.
CaseFile readCaseFile(const std::string& path);
void writeCaseFile(const std::string& path, const CaseFile& file);

/// What goes from one text to the other, line by line: "- ..." and "+ ...".
std::string lineChanges(const std::string& before, const std::string& after);

}  // namespace vexa::frontend
