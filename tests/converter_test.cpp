// How conversions in pieces begin, go on and end.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "qel/convert/Convert.h"

namespace qel::convert {
namespace {

Options options_for(InputFormat from, OutputFormat to, Way way = Way::lossless) {
  Options options;
  options.from = from;
  options.to = to;
  options.way = way;
  return options;
}

TEST(Converter, EndsWhereTheCallerSaysSo) {
  const std::string markup =
      "/b1word ~/b1 " + std::string(300000, 'x') + "/b0/f2//b1" + std::string(300000, 'y');
  for (const Way way : {Way::lossless, Way::stated}) {
    Options options = options_for(InputFormat::qel, OutputFormat::qel, way);
    const std::string whole = convert(markup, options);
    for (const std::size_t piece : {std::size_t{1000}, std::size_t{40001}, markup.size()}) {
      for (int last_question = 1; last_question < 45; last_question += 11) {
        std::size_t read = 0;
        std::size_t read_before = 0;
        std::size_t longest = 0;
        int questions = 0;
        options.stop = [&] {
          longest = std::max(longest, read - read_before);
          read_before = read;
          return ++questions == last_question;
        };
        std::string output;
        const auto source = [&](char* buffer, std::size_t size) {
          const std::size_t count = std::min({size, piece, markup.size() - read});
          markup.copy(buffer, count, read);
          read += count;
          return count;
        };
        const Report report = convert(
            source, [&](std::string_view bytes) { output.append(bytes); }, options);
        ASSERT_EQ(questions, last_question) << "asked again";
        ASSERT_LE(longest, 64U << 10U);
        ASSERT_TRUE(report.is_stopped);
        ASSERT_LT(report.bytes_in, markup.size());
        ASSERT_EQ(report.bytes_out, output.size());
        ASSERT_TRUE(whole.starts_with(output));
      }
    }
  }
  Options options = options_for(InputFormat::qel, OutputFormat::text);
  int questions = 0;
  options.stop = [&] { return ++questions > 1; };
  std::string output;
  Converter converter(options, [&](std::string_view bytes) { output.append(bytes); });
  EXPECT_FALSE(converter.push(markup)) << "one large piece";
  EXPECT_FALSE(converter.push(markup));
  EXPECT_TRUE(converter.finish().is_stopped);
  EXPECT_EQ(questions, 2);
  EXPECT_LT(output.size(), 64U << 10U);
}

TEST(Converter, PassesOnWhatTheSinkRaises) {
  for (const Way way : {Way::lossless, Way::stated}) {
    for (const OutputFormat to :
         {OutputFormat::text, OutputFormat::rtf, OutputFormat::simple_rtf}) {
      const Options options = options_for(InputFormat::qel, to, way);
      const Sink full = [](std::string_view) { throw std::length_error("full"); };
      EXPECT_THROW(
          {
            Converter converter(options, full);
            converter.push(std::string(100000, 'x'));
            converter.finish();
          },
          std::length_error);
    }
  }
}

TEST(Converter, EndsWithTheDocument) {
  std::string output;
  Converter converter(options_for(InputFormat::rtf, OutputFormat::text),
                      [&](std::string_view bytes) { output.append(bytes); });
  EXPECT_TRUE(converter.push("{\\rtf1 a" + std::string(5000, '\n')));
  EXPECT_FALSE(converter.push("b}c{\\rtf1 "));
  EXPECT_FALSE(converter.push(std::string(50000, 'd')));
  const Report report = converter.finish();
  EXPECT_EQ(report.bytes_in, 5010U);
  EXPECT_EQ(report.bytes_out, 2U);
  EXPECT_EQ(output, "ab");
}

}  // namespace
}  // namespace qel::convert
