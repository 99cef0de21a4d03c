#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "conformance/Story.h"

namespace qel::conformance {
namespace {

class Stories : public testing::TestWithParam<const char*> {};

TEST_P(Stories, Hold) {
  const std::filesystem::path folder = std::filesystem::path(QEL_TEST_DIR) / "stories";
  const std::vector<Story> stories =
      read_stories((folder / GetParam()).replace_extension("md").string());
  ASSERT_FALSE(stories.empty());
  for (const Story& story : stories) {
    ASSERT_FALSE(story.lines.empty()) << story.title;
    play(story, *make_stage());
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Stories,
                         testing::Values("typing", "shortcuts", "clipboard", "undo", "mouse",
                                         "lossless", "markup", "large_editor", "drags"),
                         [](const auto& name) { return std::string(name.param); });

}  // namespace
}  // namespace qel::conformance
