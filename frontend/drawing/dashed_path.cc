#include "frontend/drawing/dashed_path.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vexa::frontend {

namespace {

constexpr int piecesOfCurve = 24;
constexpr double mostDashes = 100'000;

double distance(VectorPoint one, VectorPoint other) { return std::hypot(other.x - one.x, other.y - one.y); }

VectorPoint between(VectorPoint one, VectorPoint other, double part) {
    return {one.x + (other.x - one.x) * part, one.y + (other.y - one.y) * part};
}

VectorPoint onCurve(VectorPoint begin, const std::array<VectorPoint, 3>& points, double part) {
    const VectorPoint first = between(begin, points[0], part);
    const VectorPoint second = between(points[0], points[1], part);
    const VectorPoint third = between(points[1], points[2], part);
    return between(between(first, second, part), between(second, third, part), part);
}

/// The path in straight lines, each part a line of its own.
std::vector<std::vector<VectorPoint>> straightened(const VectorPath& path) {
    std::vector<std::vector<VectorPoint>> lines;
    for (const PathPart& part : path.parts) {
        if (part.step == PathStep::move || lines.empty()) {
            lines.push_back({part.points[0]});
            continue;
        }
        std::vector<VectorPoint>& line = lines.back();
        if (part.step == PathStep::line) line.push_back(part.points[0]);
        if (part.step == PathStep::close) {
            const VectorPoint first = line.front();
            line.push_back(first);
            // What comes without a move begins where the figure was closed.
            lines.push_back({first});
        }
        if (part.step == PathStep::curve) {
            const VectorPoint begin = line.back();
            for (int i = 1; i <= piecesOfCurve; ++i) {
                line.push_back(onCurve(begin, part.points, static_cast<double>(i) / piecesOfCurve));
            }
        }
    }
    return lines;
}

class Dasher {
  public:
    explicit Dasher(const VectorLine& line) : lengths_(line.dashes), begin_(line.dashBegin) {
        if (lengths_.size() % 2 == 1) lengths_.insert(lengths_.end(), line.dashes.begin(), line.dashes.end());
    }

    void add(const std::vector<VectorPoint>& points, VectorPath& dashes) {
        restart();
        for (std::size_t i = 1; i < points.size(); ++i) addLine(points[i - 1], points[i], i == 1, dashes);
    }

  private:
    void restart() {
        const double all = std::accumulate(lengths_.begin(), lengths_.end(), 0.0);
        double rest = std::fmod(begin_, all);
        if (rest < 0) rest += all;
        index_ = 0;
        while (rest >= lengths_[index_]) {
            rest -= lengths_[index_];
            index_ = (index_ + 1) % lengths_.size();
        }
        left_ = lengths_[index_] - rest;
    }

    void addLine(VectorPoint from, VectorPoint to, bool begins, VectorPath& dashes) {
        const double length = distance(from, to);
        double done = 0;
        if (begins && isDash()) dashes.parts.push_back({PathStep::move, {from}});
        while (length - done > left_) {
            done += left_;
            const VectorPoint at = between(from, to, length > 0 ? done / length : 0);
            dashes.parts.push_back({isDash() ? PathStep::line : PathStep::move, {at}});
            index_ = (index_ + 1) % lengths_.size();
            left_ = lengths_[index_];
        }
        left_ -= length - done;
        if (isDash()) dashes.parts.push_back({PathStep::line, {to}});
    }

    [[nodiscard]] bool isDash() const { return index_ % 2 == 0; }

    std::vector<double> lengths_;
    double begin_;
    std::size_t index_ = 0;
    double left_ = 0;
};

}  // namespace

VectorPath dashedPath(const VectorPath& path, const VectorLine& line) {
    const double all = std::accumulate(line.dashes.begin(), line.dashes.end(), 0.0);
    if (line.dashes.empty() || !(all > 0) || !std::isfinite(all)) return path;
    const std::vector<std::vector<VectorPoint>> lines = straightened(path);
    double length = 0;
    for (const auto& each : lines) {
        for (std::size_t i = 1; i < each.size(); ++i) length += distance(each[i - 1], each[i]);
    }
    const double dashes = length / all * static_cast<double>(line.dashes.size());
    if (!(dashes < mostDashes)) return path;
    VectorPath dashed;
    Dasher dasher(line);
    for (const auto& each : lines) dasher.add(each, dashed);
    return dashed;
}

}  // namespace vexa::frontend
