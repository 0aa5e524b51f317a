// Stands in the place of the reader of HTML where the program is built without the library for it.

#include "frontend/import/html_page.h"
#include "frontend/import/html_tables.h"

namespace vexa::frontend {

bool readsHtml() { return false; }

std::vector<HtmlTable> readHtmlPage(const std::string& /*bytes*/, const std::string& /*encoding*/) {
    return {};
}

}  // namespace vexa::frontend
