/// \file
/// The tools of a tool store. A tool store is a record store whose record 0 is not a tool and
/// whose records 1 to n are tools, each laid out as an operation: its header, a message section
/// (0) and a tool data section (1). ToolList makes one ToolOperation per tool; reading the list
/// reads every tool's 105 tool parameters, which callers then get by name from its "ToolData"
/// section. Tool data is read-only here: writing the list or a tool does nothing.
#pragma once

#include <memory>
#include <vector>

#include <velkapi/HeaderSection.h>
#include <velkapi/MessageSection.h>
#include <velkapi/OperationBase.h>
#include <velkapi/ToolSection.h>

namespace VelkApi {

/// One tool of a tool store, numbered from 1, with its "Header", "Message" and "ToolData"
/// sections. A copy shares its sections with its source.
class VELKAPI_EXPORT ToolOperation : public OperationBase {
  public:
    /// Tool `nr` of tool store `vdmname`, not yet read.
    ToolOperation(int vdmname, int nr);
    /// A copy of another ToolOperation.
    ToolOperation(const ToolOperation&) = default;
    /// Becomes a copy of another ToolOperation.
    ToolOperation& operator=(const ToolOperation&) = default;
    ~ToolOperation() override;

    /// Nothing: tool data is read-only here.
    void writeToVDM() override;
    /// Reads the header and the tool data; the message section is not read.
    void readFromVDM() override;

    /// The tool record's header.
    HeaderSection* getHeaderSection() const { return header; }
    /// The tool's description.
    MessageSection* getMessageSection() const { return message; }
    /// The tool's parameters.
    MillToolSection* getToolSection() const { return tool; }

  private:
    HeaderSection* header = nullptr;
    MessageSection* message = nullptr;
    MillToolSection* tool = nullptr;
};

/// The tools of one tool store, in tool-number order. Constructing the list counts the tools
/// (the store's size minus its leading record) without reading them. A copy shares the tools
/// with its source.
class VELKAPI_EXPORT ToolList {
  public:
    /// No tools when the store does not exist or cannot be opened.
    explicit ToolList(int vdmname);
    /// A copy of another ToolList.
    ToolList(const ToolList&) = default;
    /// Becomes a copy of another ToolList.
    ToolList& operator=(const ToolList&) = default;
    virtual ~ToolList();

    /// Nothing: tool data is read-only here.
    virtual void writeToVDM();
    /// Reads every tool in order.
    virtual void readFromVDM();

    /// The number of tools in the store.
    int getToolCount() const { return toolCount; }
    /// The tool at index i (from 0); null when there is no such tool.
    ToolOperation* getTool(int i) const;

  private:
    std::vector<std::shared_ptr<ToolOperation>> tools;
    int toolCount = 0;
};

}  // namespace VelkApi
