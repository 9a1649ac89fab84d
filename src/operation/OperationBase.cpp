#include <velkapi/OperationBase.h>

#include <velkapi/SectionNames.h>

#include <stdexcept>

#include "host/HostExports.h"
#include "host/StoreSession.h"
#include "util/TextHelpers.h"

namespace VelkApi {

namespace {

// The standard decimal conversion: leading blanks, sign, digits; nothing converted throws.
int environmentNumber(const char* name) {
    int value = 0;
    if (text::toInt(host::environment(name), value) == 0) {
        throw std::invalid_argument("invalid stoi argument");
    }
    return value;
}

}  // namespace

OperationBase::OperationBase(int name, int opnr)
    : sections(std::make_shared<Sections>()),
      vdmname(name),
      number(opnr),
      turnDrivenTools(environmentNumber("TURNDRIVENTOOLS")) {
    vdm = std::make_shared<MillTurnVdm>(vdmname);
}

OperationBase::OperationBase() : sections(std::make_shared<Sections>()) {}

OperationBase::~OperationBase() = default;

int OperationBase::getVdmname() const {
    return vdmname;
}
int OperationBase::getNumber() const {
    return number;
}
void OperationBase::setMode(int newMode) {
    mode = newMode;
}
int OperationBase::getMode() const {
    return mode;
}
void OperationBase::setType(int newType) {
    type = newType;
}
int OperationBase::getType() const {
    return type;
}
void OperationBase::setActive(bool isActive) {
    active = isActive;
}
bool OperationBase::getActive() const {
    return active;
}
void OperationBase::setOperationType(MillDrillOperationType ot) {
    operationType = ot;
}
MillDrillOperationType OperationBase::getOperationType() const {
    return operationType;
}
std::string OperationBase::getCycle() {
    return "";
}

std::string OperationBase::SectionTypeToString(SectionType t, int n) {
    if (t == SectionType::Additional) {
        return kActionSectionPrefix + std::to_string(n);
    }
    return sectionName(t);
}

bool OperationBase::existsSection(SectionType t, int n) const {
    const std::string name = SectionTypeToString(t, n);
    return !name.empty() && sections->count(name) != 0;
}

SectionDictionary* OperationBase::getSection(SectionType t, int n) const {
    const auto found = sections->find(SectionTypeToString(t, n));
    return found == sections->end() ? nullptr : found->second.get();
}

MillTurnVdm* OperationBase::getVDM() const {
    return vdm.get();
}

bool OperationBase::existsOperation(int nr) {
    return vdm && vdm->OperationExist(nr);
}

int OperationBase::operationCount() {
    if (!vdm) {
        return 0;
    }
    host::StoreSession session(*vdm);
    return session ? vdm->OperationCount() : 0;
}

void OperationBase::enterSection(const std::string& name,
                                 std::shared_ptr<SectionDictionary> section) {
    if (section) {
        section->setOperation(this);
    }
    sections->emplace(name, std::move(section));
}

}  // namespace VelkApi
