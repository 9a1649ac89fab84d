#include "HostReplay.h"

#include <map>
#include <stdexcept>

#include "ExportedFunctions.h"

namespace bench {

namespace {

// Counts the objects of a walk of the drawing and takes none of them.
int visitObject(const int* /*object*/, void* /*arg*/, const double* /*xyz*/, void* context) {
    constexpr int kRejected = -1;
    ++*static_cast<long long*>(context);
    return kRejected;
}

int argument(const velkhost::HostCall& call, std::size_t i) {
    return i < call.numbers.size() ? call.numbers[i] : 0;
}

}  // namespace

bool HostReplay::usesHandle(Export call) {
    switch (call) {
        case Export::Close:
        case Export::Size:
        case Export::Seek:
        case Export::SingleSeek:
        case Export::SingleGet:
        case Export::SingleAdd:
        case Export::SingleReplace:
        case Export::Insert:
        case Export::SingleDelete:
            return true;
        default:
            return false;
    }
}

HostReplay::HostReplay(const std::vector<velkhost::HostCall>& calls) {
    static const std::map<std::string, Export> kExports = {
        {"VelkEnvironment", Export::Environment},
        {"VelkReadGlobalI", Export::ReadGlobalI},
        {"VelkReadGlobalW", Export::ReadGlobalW},
        {"VelkReadGlobal$", Export::ReadGlobalStr},
        {"VelkMacroVdmExists", Export::Exists},
        {"VelkMacroVdmCheckOpen", Export::CheckOpen},
        {"VelkMacroVdmOpen", Export::Open},
        {"VelkMacroVdmClose", Export::Close},
        {"VelkMacroVdmSize", Export::Size},
        {"VelkMacroVdmSeek", Export::Seek},
        {"VelkMacroVdmSingleSeek", Export::SingleSeek},
        {"VelkMacroVdmSingleGet$", Export::SingleGet},
        {"VelkMacroVdmSingleAdd$", Export::SingleAdd},
        {"VelkMacroVdmSingleReplace$", Export::SingleReplace},
        {"VelkMacroVdmInsert$", Export::Insert},
        {"VelkMacroVdmSingleDelete", Export::SingleDelete},
        {"VelkGetFigure", Export::GetFigure},
        {"VelkGetFigureObject", Export::GetFigureObject},
        {"VelkGetFigureInstance", Export::GetFigureInstance},
        {"VelkGetNonCadObject", Export::GetNonCadObject},
        {"VelkGetObjectDelete", Export::GetObjectDelete},
        {"VelkGetObjectType", Export::GetObjectType},
        {"VelkGetObjectName", Export::GetObjectName},
        {"VelkGetObjectAttribute", Export::GetObjectAttribute},
        {"VelkFigureFindName", Export::FigureFindName},
        {"VelkObjectStart", Export::ObjectStart},
        {"VelkProcessCad", Export::ProcessCad},
        {"VelkGetWnd", Export::GetWnd},
        {"MessageBoxA", Export::MessageBox},
    };
    // The host gives out a new handle at every open: the first new handle used after an open
    // is the one that open gave out.
    std::map<int, int> slotOfHandle;
    int openedSlot = -1;
    steps.reserve(calls.size());
    for (const velkhost::HostCall& call : calls) {
        const auto found = kExports.find(call.exportName);
        if (found == kExports.end()) {
            throw std::invalid_argument("cannot replay a call of " + call.exportName);
        }
        Step step{found->second,     argument(call, 0), argument(call, 1),
                  argument(call, 2), call.text,         -1};
        if (step.call == Export::Open) {
            openedSlot = static_cast<int>(handles.size());
            handles.push_back(0);
        } else if (usesHandle(step.call)) {
            const auto known = slotOfHandle.find(step.a);
            if (known != slotOfHandle.end()) {
                step.slot = known->second;
            } else if (openedSlot >= 0) {
                step.slot = slotOfHandle[step.a] = openedSlot;
                openedSlot = -1;
            }
        }
        steps.push_back(std::move(step));
    }
}

int HostReplay::handleOf(const Step& step) const {
    return step.slot >= 0 ? handles[static_cast<std::size_t>(step.slot)] : step.a;
}

long long HostReplay::run() {
    static char line[VelkApi::host::kLineBufferSize];
    static char text[VelkApi::host::kStringBufferSize];
    long long sum = 0;
    int status = 0;
    std::size_t opened = 0;
    for (const Step& step : steps) {
        const char* stepText = step.text.c_str();
        switch (step.call) {
            case Export::Environment:
                sum += VelkEnvironment(stepText)[0];
                break;
            case Export::ReadGlobalI:
                sum += VelkReadGlobalI(stepText, &status);
                break;
            case Export::ReadGlobalW:
                sum += static_cast<long long>(VelkReadGlobalW(stepText, &status));
                break;
            case Export::ReadGlobalStr:
                VelkReadGlobal$(stepText, text, &status);
                sum += status;
                break;
            case Export::Exists:
                sum += VelkMacroVdmExists(step.a);
                break;
            case Export::CheckOpen:
                sum += VelkMacroVdmCheckOpen(step.a);
                break;
            case Export::Open:
                handles[opened] = VelkMacroVdmOpen(step.a, step.b);
                sum += handles[opened++];
                break;
            case Export::Close:
                sum += VelkMacroVdmClose(handleOf(step));
                break;
            case Export::Size:
                sum += VelkMacroVdmSize(handleOf(step));
                break;
            case Export::Seek:
                sum += VelkMacroVdmSeek(handleOf(step), step.b, step.c);
                break;
            case Export::SingleSeek:
                sum += VelkMacroVdmSingleSeek(handleOf(step), step.b);
                break;
            case Export::SingleGet:
                sum += VelkMacroVdmSingleGet$(handleOf(step), line, step.b);
                break;
            case Export::SingleAdd:
                sum += VelkMacroVdmSingleAdd$(handleOf(step), stepText, step.b);
                break;
            case Export::SingleReplace:
                sum += VelkMacroVdmSingleReplace$(handleOf(step), stepText, step.b);
                break;
            case Export::Insert:
                sum += VelkMacroVdmInsert$(handleOf(step), stepText, step.b);
                break;
            case Export::SingleDelete:
                sum += VelkMacroVdmSingleDelete(handleOf(step), step.b);
                break;
            case Export::GetFigure:
                sum += VelkGetFigure(stepText);
                break;
            case Export::GetFigureObject:
                sum += VelkGetFigureObject(step.a);
                break;
            case Export::GetFigureInstance:
                sum += VelkGetFigureInstance(step.a, step.b);
                break;
            case Export::GetNonCadObject:
                sum += VelkGetNonCadObject(step.a, step.b);
                break;
            case Export::GetObjectDelete:
                sum += VelkGetObjectDelete(step.a);
                break;
            case Export::GetObjectType:
                sum += VelkGetObjectType(step.a);
                break;
            case Export::GetObjectName:
                sum += VelkGetObjectName(step.a);
                break;
            case Export::GetObjectAttribute:
                sum += VelkGetObjectAttribute(step.a);
                break;
            case Export::FigureFindName:
                sum += VelkFigureFindName(step.a) != nullptr;
                break;
            case Export::ObjectStart: {
                double x = 0.0;
                double y = 0.0;
                double z = 0.0;
                VelkObjectStart(step.a, &x, &y, &z);
                sum += static_cast<long long>(x + y + z);
                break;
            }
            case Export::ProcessCad:
                VelkProcessCad(visitObject, step.a, nullptr, nullptr, nullptr, step.b, &sum);
                break;
            case Export::GetWnd:
                sum += VelkGetWnd(step.a) != nullptr;
                break;
            case Export::MessageBox:
                sum += MessageBoxA(VelkGetWnd(2), stepText, "", static_cast<unsigned>(step.a));
                break;
        }
    }
    return sum;
}

}  // namespace bench
