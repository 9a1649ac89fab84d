#include <velkapi/GeolibWrapper.h>
#include <velkapi/MacroExport.h>
#include <velkapi/Value.h>

#include <cmath>
#include <initializer_list>

#include "platform/Platform.h"
#include "strategy/MachiningLibrary.h"

namespace VelkApi {

namespace {

// The library's depth-step modes.
constexpr int kFixedDepthStep = 0;
constexpr int kSlices = 1;

// The library's own path pieces, joined with the platform's separator.
std::string joined(std::initializer_list<const char*> pieces) {
    std::string path;
    for (const char* piece : pieces) {
        if (!path.empty()) {
            path += platform::pathSeparator();
        }
        path += piece;
    }
    return path;
}

// A folder the host names, as the host gives it; empty when it cannot.
std::string hostFolder(const char* name) {
    std::string folder;
    MacroExport::GetGlobalStrVar(name, folder);
    return folder;
}

// A number of slices: the infeed without its fraction, within the range of an int.
int slicesOf(double infeed) {
    if (std::isnan(infeed)) {
        return 0;
    }
    return infeed >= 2147483647.0 ? 2147483647 : static_cast<int>(infeed);
}

}  // namespace

GeolibWrapper::GeolibWrapper()
    : handle(strategy::GeoLibCreate(), [](void* object) { strategy::GeoLibDelete(object); }) {}

GeolibWrapper& GeolibWrapper::operator=(const GeolibWrapper& other) = default;

GeolibWrapper::~GeolibWrapper() = default;

// ---- the settings, each forwarded to the library

void GeolibWrapper::setAdaptiveRoughingLinkClearanceHeight(double value) {
    strategy::AdaptiveRoughingLinkClearanceHeight.set(handle.get(), value);
}

double GeolibWrapper::getAdaptiveRoughingLinkClearanceHeight() const {
    return strategy::AdaptiveRoughingLinkClearanceHeight.get(handle.get());
}

void GeolibWrapper::setAdaptiveRoughingLinkLengthThresholdFactor(double value) {
    strategy::AdaptiveRoughingLinkLengthThresholdFactor.set(handle.get(), value);
}

double GeolibWrapper::getAdaptiveRoughingLinkLengthThresholdFactor() const {
    return strategy::AdaptiveRoughingLinkLengthThresholdFactor.get(handle.get());
}

void GeolibWrapper::setRampAngle(double value) {
    strategy::RampAngle.set(handle.get(), value);
}

double GeolibWrapper::getRampAngle() const {
    return strategy::RampAngle.get(handle.get());
}

void GeolibWrapper::setRampLengthPercent(double value) {
    strategy::RampLengthPercent.set(handle.get(), value);
}

double GeolibWrapper::getRampLengthPercent() const {
    return strategy::RampLengthPercent.get(handle.get());
}

void GeolibWrapper::setDepthStep(double value) {
    strategy::DepthStep.set(handle.get(), value);
}

double GeolibWrapper::getDepthStep() const {
    return strategy::DepthStep.get(handle.get());
}

void GeolibWrapper::setNumberOfSlices4DepthStep(int value) {
    strategy::NumberOfSlices4DepthStep.set(handle.get(), value);
}

int GeolibWrapper::getNumberOfSlices4DepthStep() const {
    return strategy::NumberOfSlices4DepthStep.get(handle.get());
}

void GeolibWrapper::setStartHeight(double value) {
    strategy::StartHeight.set(handle.get(), value);
}

double GeolibWrapper::getStartHeight() const {
    return strategy::StartHeight.get(handle.get());
}

void GeolibWrapper::setEndHeight(double value) {
    strategy::EndHeight.set(handle.get(), value);
}

double GeolibWrapper::getEndHeight() const {
    return strategy::EndHeight.get(handle.get());
}

void GeolibWrapper::setMaxStepoverDistance(double value) {
    strategy::MaxStepoverDistance.set(handle.get(), value);
}

double GeolibWrapper::getMaxStepoverDistance() const {
    return strategy::MaxStepoverDistance.get(handle.get());
}

void GeolibWrapper::setStockRemain(double value) {
    strategy::StockRemain.set(handle.get(), value);
}

double GeolibWrapper::getStockRemain() const {
    return strategy::StockRemain.get(handle.get());
}

void GeolibWrapper::setCurMachType(MachType value) {
    strategy::CurMachType.set(handle.get(), static_cast<int>(value));
}

MachType GeolibWrapper::getCurMachType() const {
    return static_cast<MachType>(strategy::CurMachType.get(handle.get()));
}

// ---- the infeed: depth step or slices

void GeolibWrapper::setInfeed(double value) {
    if (value < 0.0) {
        strategy::DepthStepMode.set(handle.get(), kFixedDepthStep);
        strategy::DepthStep.set(handle.get(), -value);
    } else {
        strategy::DepthStepMode.set(handle.get(), kSlices);
        strategy::NumberOfSlices4DepthStep.set(handle.get(), slicesOf(value));
    }
}

double GeolibWrapper::getInfeed() const {
    switch (strategy::DepthStepMode.get(handle.get())) {
        case kFixedDepthStep:
            return -strategy::DepthStep.get(handle.get());
        case kSlices:
            return strategy::NumberOfSlices4DepthStep.get(handle.get());
        default:
            return kUnsetDouble;
    }
}

// ---- the settings file

bool GeolibWrapper::OpenBin(const std::string& path) {
    return strategy::GeoLibDeserialize(handle.get(), 0, path.c_str()) != 0;
}

bool GeolibWrapper::SaveBin(const std::string& path) const {
    return strategy::GeoLibSerialize(handle.get(), 0, path.c_str()) != 0;
}

bool GeolibWrapper::OpenStandardBin() {
    static const std::string installed = joined({"support", "mill", "bin", "2dhighspeedrough.bin"});
    static const std::string users = joined({"data", "mill", "settings", "2dhighspeedrough.bin"});
    std::string path = hostFolder("$_root_dir") + installed;
    if (!platform::fileExists(path)) {
        path = hostFolder("$_user_data_dir") + users;
    }
    return OpenBin(path);
}

}  // namespace VelkApi
