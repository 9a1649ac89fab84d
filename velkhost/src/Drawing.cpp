#include "Drawing.h"

namespace velkhost::detail {

namespace {

constexpr int kAccepted = 0;

}  // namespace

int Drawing::figureNumber(const char* name) const {
    if (!name) {
        return -1;
    }
    for (const auto& [number, figure] : figures) {
        if (figure.name == name) {
            return number;
        }
    }
    return -1;
}

const char* Drawing::figureName(int figure) const {
    const auto found = figures.find(figure);
    return found == figures.end() ? "" : found->second.name.c_str();
}

int Drawing::figureObject(int figure, int attribute) const {
    for (const auto& [number, object] : objects) {
        if (object.type == kFigureObject && object.name == figure &&
            object.attribute == attribute) {
            return number;
        }
    }
    return 0;
}

int Drawing::nonCadObject(int nonCadNumber) const {
    for (const auto& [number, object] : objects) {
        if (object.type == kNonCadObject && object.name == nonCadNumber) {
            return number;
        }
    }
    return 0;
}

const CadObject* Drawing::object(int number) const {
    const auto found = objects.find(number);
    return found == objects.end() ? nullptr : &found->second;
}

void Drawing::walk(VelkCadCallback callback, void* context) const {
    if (!callback) {
        return;
    }
    for (const auto& [number, object] : objects) {
        if (object.deleted || object.type == kNonCadObject) {
            continue;
        }
        const int record[2] = {object.flags, number};
        if (callback(record, nullptr, object.start.data(), context) == kAccepted) {
            return;
        }
    }
}

}  // namespace velkhost::detail
