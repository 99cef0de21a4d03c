// How conversions in pieces begin, go on and end.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "qel/base/Error.h"
#include "qel/convert/Convert.h"
#include "support/Conversions.h"

namespace qel::convert {
namespace {

TEST(Converter, EndsWhereTheCallerSaysSo) {
  const std::string markup =
      "/b1word ~/b1 " + std::string(300000, 'x') + "/b0/f2//b1" + std::string(300000, 'y');
  for (const Way way : {Way::lossless, Way::stated}) {
    Options options = test::options_for(InputFormat::qel, OutputFormat::qel, way);
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
  Options options = test::options_for(InputFormat::qel, OutputFormat::text);
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

/// Where all is read before anything is written, most of the time may still be to come.
TEST(Converter, EndsWhereTheCallerSaysSoAfterAllIsRead) {
  const std::string text = "{\\rtf1 " + std::string(100000, 'x') + "\\b y}";
  Options html = test::options_for(InputFormat::html, OutputFormat::text);
  html.html_reader.read = [](std::string_view, const auto& base, auto& sink) {
    const auto format = sink.intern(base);
    for (int i = 0; i < 10000; ++i) sink.text(u"0123456789", format);
    sink.finish({});
    return richtext::DroppedParts();
  };
  Options normal = test::options_for(InputFormat::qel, OutputFormat::qel);
  normal.normalizes = true;
  for (Options options :
       {test::options_for(InputFormat::rtf, OutputFormat::rtf), html, normal,
        test::options_for(InputFormat::rtf, OutputFormat::simple_rtf, Way::stated),
        test::options_for(InputFormat::text, OutputFormat::segments, Way::stated),
        test::options_for(InputFormat::qel, OutputFormat::qel, Way::stated)}) {
    const std::string whole = convert(text, options);
    int questions = 0;
    int last_question = 0;
    options.stop = [&] { return ++questions == last_question; };
    for (const bool ends : {false, true}) {
      last_question = ends ? questions : 0;  // the last one there was
      questions = 0;
      std::string output;
      Converter converter(options, [&](std::string_view bytes) { output.append(bytes); });
      converter.push(text);
      const int while_reading = questions;
      ASSERT_EQ(converter.finish().is_stopped, ends);
      ASSERT_GT(questions, while_reading + 1);
      ASSERT_TRUE(whole.starts_with(output));
      ASSERT_EQ(output.size() < whole.size(), ends);
    }
  }
  Options options;
  int questions = 0;
  options.stop = [&] { return ++questions > 2; };
  const std::u16string markup(1000000, u'x');
  EXPECT_LT(rtf_from_markup(markup, options).size(), markup.size() / 10);
  EXPECT_EQ(questions, 3);
}

TEST(Converter, RaisesErrorsAgain) {
  for (const Way way : {Way::lossless, Way::stated}) {
    for (const OutputFormat to :
         {OutputFormat::text, OutputFormat::rtf, OutputFormat::simple_rtf}) {
      const Options options = test::options_for(InputFormat::qel, to, way);
      const Sink full = [](std::string_view) { throw std::length_error("full"); };
      Converter converter(options, full);
      EXPECT_THROW(
          {
            converter.push(std::string(100000, 'x'));
            converter.finish();
          },
          std::length_error);
      EXPECT_THROW(converter.push("x"), std::length_error);
      EXPECT_THROW(converter.finish(), std::length_error);
    }
  }
  std::string output;
  Converter refused({}, [&](std::string_view bytes) { output.append(bytes); });
  EXPECT_THROW(refused.push(std::string(5000, '\0')), Error);
  EXPECT_THROW(refused.push(std::string(5000, 'x')), Error);
  EXPECT_THROW(refused.finish(), Error);
  EXPECT_EQ(output, "");
}

TEST(Converter, EndsWithTheDocument) {
  std::string output;
  Converter converter(test::options_for(InputFormat::rtf, OutputFormat::text),
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
