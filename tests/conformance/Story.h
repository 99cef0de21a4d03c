#pragma once

#include <string>
#include <vector>

#include "conformance/Stage.h"

namespace qel::conformance {

/// A story of a user at a text box, from a file in tests/stories: see the README there.
struct Story {
  struct Line {
    int number;
    std::u16string text;
  };

  std::string file;
  std::string title;
  std::vector<Line> lines;
};

std::vector<Story> read_stories(const std::string& file);

/// Plays the story with a new control; each expectation that does not hold fails the test at its
/// line.
void play(const Story& story, Stage& stage);

}  // namespace qel::conformance
