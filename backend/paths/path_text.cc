#include "backend/paths/path_text.h"

#include <algorithm>
#include <vector>

#include "backend/text/character_set.h"

namespace vexa {

namespace {

bool isSeparator(char c) { return c == '\\' || c == '/'; }

std::size_t characterAt(std::string_view path, std::size_t at) {
    return currentCharacterSet().characterLength(path.data() + at, path.size() - at);
}

bool endsInSeparator(std::string_view path) {
    std::size_t at = 0;
    for (;;) {
        at += segmentLength(path.substr(at));
        if (at == path.size()) {
            return false;
        }
        if (++at == path.size()) {
            return true;
        }
    }
}

/// What `..` cannot take off, and how many names belong to it: a drive, a separator, a server and its share.
struct Root {
    std::string text;
    std::size_t names = 0;
};

/// Takes the root off `path`.
Root takeRoot(std::string_view& path) {
    Root root;
    if (path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1])) {
        path.remove_prefix(2);
        return {"\\\\", 2};
    }
    const std::size_t first = path.empty() ? 0 : characterAt(path, 0);
    if (first > 0 && first < path.size() && path[first] == ':') {
        root.text = path.substr(0, first + 1);
        path.remove_prefix(first + 1);
    }
    if (!path.empty() && isSeparator(path[0])) {
        root.text.push_back('\\');
        path.remove_prefix(1);
    }
    return root;
}

std::vector<std::string_view> namesOf(std::string_view path, const Root& root) {
    std::vector<std::string_view> names;
    while (!path.empty()) {
        const std::size_t length = segmentLength(path);
        const std::string_view name = path.substr(0, length);
        path.remove_prefix(std::min(length + 1, path.size()));
        if (name.empty() || name == ".") {
            continue;
        }
        if (name != "..") {
            names.push_back(name);
        } else if (names.size() > root.names) {
            names.pop_back();
        }
    }
    return names;
}

}  // namespace

std::size_t segmentLength(std::string_view path) {
    std::size_t at = 0;
    while (at < path.size() && !isSeparator(path[at])) {
        at += characterAt(path, at);
    }
    return at;
}

bool isWholePath(std::string_view path) {
    if (path.empty()) {
        return false;
    }
    if (isSeparator(path[0])) {
        return true;
    }
    const std::size_t first = characterAt(path, 0);
    return first < path.size() && path[first] == ':';
}

std::string resolvedPath(std::string_view path) {
    const bool folder = endsInSeparator(path);
    const Root root = takeRoot(path);
    std::string result = root.text;
    for (const std::string_view name : namesOf(path, root)) {
        if (result.size() > root.text.size()) {
            result.push_back('\\');
        }
        result.append(name);
    }
    if (folder && result.size() > root.text.size()) {
        result.push_back('\\');
    }
    return result;
}

std::string joinedPath(std::string_view folder, std::string_view rest) {
    std::string result(folder);
    if (!endsInSeparator(folder)) {
        result.push_back('\\');
    }
    return result.append(rest);
}

}  // namespace vexa
