// What the tool tests share: a host with mill tools, tool records in a store, and the host's
// tool variables.
#pragma once

#include <velkapi/ToolList.h>
#include <velkapi/ToolSection.h>

#include <memory>
#include <string>
#include <vector>

#include "HostFixture.h"
#include "ToolRecordLines.h"

using Texts = std::vector<std::string>;

class ToolTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
        toolRecord = std::make_unique<VelkApi::ToolOperation>(2, 1);
    }

    // Store `store` with a leading record and one tool record (record 1) of these tool lines.
    static void storeTool(int store, const Texts& toolLines) {
        velkhost::Record tool = {"0 1 2 1 " + std::to_string(toolLines.size()), "Tool"};
        tool.insert(tool.end(), toolLines.begin(), toolLines.end());
        host().setStore(store, {{"0 1 0"}, tool});
    }

    // The tool data lines of record `record` of a store whose records have a message section
    // of one line.
    static Texts storedToolLines(int store, int record) {
        const velkhost::Record lines = host().lines(store, record);
        return Texts(lines.begin() + 2, lines.end());
    }

    // Every tool variable of the host, declared as "not set": ints 2147483647, doubles
    // 2147483647.0, texts " ", and the arrays with the elements the tool record uses.
    static void declareToolVariables() {
        for (int line = 0; line < VelkApi::ToolSection::LINESCOUNT; ++line) {
            for (int slot = 0; slot < VelkApi::ToolSection::lineslen[line]; ++slot) {
                declareScalar(VelkApi::ToolSection::lines[line][slot]);
            }
        }
        host().setGlobal("i_t_bin", std::vector<int>(3, 2147483647));
        host().setGlobal("w_t_val", std::vector<double>(10, 2147483647.0));
        host().setGlobal("w_t_tur_val", std::vector<double>(20, 2147483647.0));
    }

    // The blank-separated fields of a written line.
    static Texts fieldsOf(const std::string& line) {
        Texts fields(1);
        for (const char c : line) {
            if (c == ' ') {
                fields.emplace_back();
            } else {
                fields.back() += c;
            }
        }
        return fields;
    }

    template <class T>
    static T global(const std::string& name) {
        return host().globalAs<T>(name).value();
    }

    // Record 1 of store 2, as the operation the sections under test read and write.
    std::unique_ptr<VelkApi::ToolOperation> toolRecord;

  private:
    static void declareScalar(const std::string& name) {
        if (name.find('(') != std::string::npos) {
            return;  // an array element
        }
        switch (name.front()) {
            case 'i':
                host().setGlobal(name, 2147483647);
                break;
            case 'w':
                host().setGlobal(name, 2147483647.0);
                break;
            default:
                host().setGlobal(name, std::string(" "));
                break;
        }
    }
};
