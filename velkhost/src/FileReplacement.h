// Writing a file so that a failure on the way never leaves half of it behind.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

namespace velkhost::detail {

// Replaces the content of the file at `path` with what `writeContent` writes: writes a new file
// beside it (in the same folder, so that it lies on the same volume), then renames the new file
// over the old one. Until that rename the old file is untouched, and after it the file holds all of
// the new content. A link is followed: the file it points to is replaced and the link stays. Throws
// ProjectError naming `path` and the step that failed; the old file is then as it was and the new
// one is removed. A read-only file is refused rather than replaced.
void replaceFileContent(const std::string& path,
                        const std::function<void(std::ostream&)>& writeContent);

}  // namespace velkhost::detail
