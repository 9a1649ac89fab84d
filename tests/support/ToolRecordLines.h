// The store lines of a tool record, as the mill tool section writes them.
#pragma once

#include <string>
#include <vector>

namespace testsupport {

// The 19 lines of a tool record nothing has been set in: every int 2147483647, every double
// 2147483647.0 (written 2.14748e+09), every text empty.
const std::vector<std::string>& freshToolRecord();

// The 19 lines of a 10 mm end mill's record, every name given a value, as they are written
// (doubles with six significant digits): "w_t_diam" 10, "i_t_tool_nr" 2, "i_t_holder_id" 40
// on lines 1 and 5, "w_t_work_time" 12.3457, the comment " keep  the blanks ".
const std::vector<std::string>& filledToolRecord();

}  // namespace testsupport
