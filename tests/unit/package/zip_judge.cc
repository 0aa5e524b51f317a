#include "tests/unit/package/zip_judge.h"

#include <gtest/gtest.h>
#include <zip.h>

namespace vexa::frontend {

std::map<std::string, std::string> judgedContent(const std::string& archive) {
    std::map<std::string, std::string> content;
    zip_error_t error;
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    zip_t* opened = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (opened == nullptr) {
        zip_source_free(source);
        ADD_FAILURE() << zip_error_strerror(&error);
        return content;
    }
    for (zip_int64_t i = 0; i < zip_get_num_entries(opened, 0); ++i) {
        zip_stat_t stat;
        EXPECT_EQ(zip_stat_index(opened, static_cast<zip_uint64_t>(i), 0, &stat), 0);
        std::string text(stat.size, '\0');
        zip_file_t* file = zip_fopen_index(opened, static_cast<zip_uint64_t>(i), 0);
        EXPECT_NE(file, nullptr) << stat.name;
        EXPECT_EQ(zip_fread(file, text.data(), text.size() + 1), static_cast<zip_int64_t>(text.size()));
        EXPECT_EQ(zip_fclose(file), 0) << stat.name;
        content[stat.name] = text;
    }
    zip_discard(opened);
    return content;
}

std::string judgesArchive(const std::map<std::string, std::string>& entries, bool deflated) {
    zip_error_t error;
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* archive = zip_open_from_source(target, ZIP_CREATE | ZIP_TRUNCATE, &error);
    zip_source_keep(target);
    for (const auto& [name, text] : entries) {
        zip_source_t* source = zip_source_buffer(archive, text.data(), text.size(), 0);
        const zip_int64_t place = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
        EXPECT_GE(place, 0);
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(place),
                                 deflated ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 9);
    }
    EXPECT_EQ(zip_close(archive), 0);
    zip_source_open(target);
    std::string bytes;
    char block[4096];
    for (zip_int64_t count = 1; count > 0;) {
        count = zip_source_read(target, block, sizeof block);
        bytes.append(block, static_cast<std::size_t>(count));
    }
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

}  // namespace vexa::frontend
