#include "frontend/drawing/drawing_library.h"

#include "backend/platform/file_system.h"

namespace vexa::frontend {

namespace {

/// From the program's folder.
constexpr const char* placeOfLibrary = "/../lib/vexadrawing.so";

std::string path() { return programFolder() + placeOfLibrary; }

}  // namespace

DynamicLibrary::Entry drawingFunction(const char* name) {
    // Never unloaded: its libraries keep threads and hooks of their own.
    static FileResult result;
    static const DynamicLibrary* const library = DynamicLibrary::load(path(), result).release();
    return library == nullptr ? nullptr : library->find(name);
}

bool isDrawingInstalled() {
    static const bool installed = FileSystem::current().isFile(path());
    return installed;
}

}  // namespace vexa::frontend
