// The project's drawing, and the answers the host's geometry functions give from it.
#pragma once

#include <map>
#include <string>

#include "HostAbi.h"
#include "velkhost/OfflineHost.h"

namespace velkhost::detail {

struct Drawing {
    std::map<int, CadFigure> figures;  // by number
    std::map<int, CadObject> objects;  // by number

    bool empty() const { return figures.empty() && objects.empty(); }

    // The figure's number, or -1 when no figure has that name.
    int figureNumber(const char* name) const;
    // The name of a figure; "" for an unknown number.
    const char* figureName(int figure) const;
    // The object of the figure's instance (0: the whole figure), or 0 when there is none.
    int figureObject(int figure, int attribute) const;
    // The object of a non-CAD number, or 0 when there is none.
    int nonCadObject(int number) const;
    // The object of that number, or null.
    const CadObject* object(int number) const;
    // Hands every drawing object that is not deleted (non-CAD objects are not part of the
    // drawing) to `callback` in number order, as {flags, number} and its start point, and stops
    // at the first one the callback accepts (returns 0).
    void walk(VelkCadCallback callback, void* context) const;
};

}  // namespace velkhost::detail
