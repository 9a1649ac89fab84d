// An operation that is just a store and a number, for a section under test to read and write.
#pragma once

#include <velkapi/OperationBase.h>

class StoredOperation : public VelkApi::OperationBase {
  public:
    StoredOperation(int store, int nr) : OperationBase(store, nr) {}
    void writeToVDM() override {}
    void readFromVDM() override {}
};
