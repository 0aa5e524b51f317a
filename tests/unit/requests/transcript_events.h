// What the transcripts expect to go over the wire.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace vexa {

struct WiredText {
    std::string place;  ///< the transcript below its folder, and the number of the event in it, from 1
    std::string text;
};

/// The texts of the events `event` in the transcripts below `folder`, in the order of their places.
[[nodiscard]] inline std::vector<WiredText> wiredTexts(const std::filesystem::path& folder,
                                                       const std::string& event) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<WiredText> texts;
    for (const std::filesystem::path& file : files) {
        std::ifstream stream(file, std::ios::binary);
        int count = 0;
        bool below = false;    // the text of the event found last may stand in this line
        bool further = false;  // and has begun already
        for (std::string line; std::getline(stream, line);) {
            if (below && line.starts_with("  ")) {
                (texts.back().text += further ? "\n" : "") += line.substr(2);
                further = true;
                continue;
            }
            below = line.starts_with("{\"event\":\"" + event + "\"");
            further = false;
            if (below) {
                const nlohmann::json found = nlohmann::json::parse(line);
                texts.push_back(
                    {std::filesystem::relative(file, folder).generic_string() + " " + std::to_string(++count),
                     found.value("text", "")});
            }
        }
    }
    return texts;
}

}  // namespace vexa
