// Setting an entry to its default, for SectionValue and for the entries a section keeps itself.
#pragma once

#include <velkapi/Value.h>
#include <velkapi/VelkObject.h>

#include <string>

#include "util/ErrorBoundary.h"

namespace VelkApi::detail {

// Fills a local of the datum's type from the default and sets it as the value. Without a
// default the local keeps its initial content, which is then set.
template <typename Entry, typename T>
void copyDefault(Entry& entry, T local) {
    entry.getDefault(&local);
    entry.setValue(&local);
}

// By the entry's data type `type`; entries of no type and actions are left as they are.
// Failures are recorded under the text the operation's writer uses.
template <typename Entry>
void setToDefault(Entry& entry, ValueDataType type) {
    guarded("Error in MillDrillOperation::writeToVDM()", [&] {
        switch (type) {
            case ValueDataType::Double:
                copyDefault(entry, 0.0);
                break;
            case ValueDataType::Int:
                copyDefault(entry, 0);
                break;
            case ValueDataType::Bool:
                copyDefault(entry, false);
                break;
            case ValueDataType::String:
                copyDefault(entry, std::string());
                break;
            case ValueDataType::VelkObject:
                copyDefault(entry, VelkObject());
                break;
            default:
                break;
        }
    });
}

}  // namespace VelkApi::detail
