#include "tests/unit/drawing/sample_pictures.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>

namespace vexa::frontend::test {

Picture svgOf(const std::string& content) {
    return {PictureForm::svg, kOpening + content + "</svg>", 60, 30};
}

Picture twoBars() {
    return svgOf(R"(<rect class="left" width="30" height="40" fill="#ff0000"/>)"
                 R"(<rect id="right" x="50" width="30" height="40" style="fill:#0000ff"/>)");
}

Picture manyColors() {
    std::string bars;
    for (int x = 0; x < 80; ++x) {
        for (int y = 0; y < 40; y += 8) {
            bars += "<rect x='" + std::to_string(x) + "' y='" + std::to_string(y) +
                    "' width='1' height='8' fill='rgb(" + std::to_string(3 * x) + "," +
                    std::to_string(6 * y) + "," + std::to_string(255 - 2 * x) + ")'/>";
        }
    }
    return svgOf(bars);
}

Picture someText() {
    return svgOf(R"(<text x="4" y="24" font-family="DejaVu Sans" font-size="14">Income</text>)");
}

DrawingOrder orderOf(DrawnForm form, DrawnDepth depth) {
    DrawingOrder order;
    order.form = form;
    order.depth = depth;
    order.width = 60;
    order.height = 30;
    return order;
}

DrawnPicture drawn(const Picture& picture, const DrawingOrder& order, const std::string& rules) {
    return beginDrawing(picture, rules, "Two bars", order)->finish();
}

std::string judged(const std::string& bytes, const std::string& extension, const std::string& places) {
    std::string name = testing::TempDir() + "vexa_pictureXXXXXX" + extension;
    const int file = mkstemps(name.data(), static_cast<int>(extension.size()));
    if (file < 0) return "no file";
    close(file);
    std::ofstream(name, std::ios::binary) << bytes;
    const std::string call = "/usr/bin/python3 " VEXA_DRAWING_JUDGE " " + name + " " + places + " 2>&1";
    std::string answer;
    if (std::FILE* const pipe = popen(call.c_str(), "r")) {
        for (int each = std::fgetc(pipe); each != EOF; each = std::fgetc(pipe))
            answer += static_cast<char>(each);
        pclose(pipe);
    }
    std::remove(name.c_str());
    if (answer.ends_with('\n')) answer.pop_back();
    return answer;
}

std::string temporaryFile(const std::string& ending) {
    return testing::TempDir() + "vexa_" + std::to_string(getpid()) + ending;
}

bool isInstalled(const std::string& program) {
    const bool found = std::system(("command -v " + program + " > /dev/null 2>&1").c_str()) == 0;
    if (!found) std::cout << program << " is not installed: it is not asked\n";
    return found;
}

std::string rendered(const std::string& one, const std::string& other) {
    const std::string name = temporaryFile("_other.eps");
    std::ofstream(name, std::ios::binary) << other;
    std::string found = judged(one, ".eps", "same:" + name);
    std::remove(name.c_str());
    return found;
}

}  // namespace vexa::frontend::test
