#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "qel/base/Error.h"
#include "qel/box/Box.h"
#include "qel/control/QELTextbox.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/headless/PropertyBag.h"
#include "qel/richtext/DocumentReader.h"
#include "support/Form.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

using headless::PropertyBag;
using namespace std::string_view_literals;

/// A platform on which styles are what a test says.
class StyledPlatform : public headless::HeadlessPlatform, private platform::VisualStyles {
 public:
  const platform::VisualStyles& visual_styles() const override { return *this; }
  std::optional<std::u16string> scheme;
  bool fails = false;

 private:
  std::optional<std::u16string> color_scheme() const override {
    if (fails) throw Error(5, "test", "no styles");
    return scheme;
  }
};

/// A bag with values of other types than were written.
class Strangers : public platform::PropertyBag {
 public:
  Variant read(std::u16string_view name, const Variant& preset) const override {
    if (name == u"BackColor") return 1e99;
    if (name == u"TabStop") return std::int32_t{0};
    return preset;
  }
  void write(std::u16string_view, const Variant&, const Variant&) override {}
};

/// A conversion box of a class that the library does not know, in front of one that it does.
class HostsBox : public platform::RichEdit {
 public:
  using Scope = platform::Scope;
  richtext::Document content(Scope scope) const override { return box_.content(scope); }
  void put_content(Scope scope, richtext::Document content) override {
    ++loads;
    box_.put_content(scope, std::move(content));
  }
  platform::TextDefaults text_defaults(Scope scope) const override {
    return box_.text_defaults(scope);
  }
  platform::Range selection() const override { return box_.selection(); }
  void select(platform::Range range) override { box_.select(range); }
  richtext::MixedFormat format() const override { return box_.format(); }
  void change_format(const richtext::FormatChange& change) override { box_.change_format(change); }
  std::optional<richtext::Alignment> alignment() const override { return box_.alignment(); }
  void put_alignment(richtext::Alignment alignment) override { box_.put_alignment(alignment); }
  void visit_runs(std::int32_t from, const platform::RunVisitor& visit) const override {
    box_.visit_runs(from, visit);
  }
  platform::BoxAppearance appearance() const override { return box_.appearance(); }
  void put_appearance(const platform::BoxAppearance& appearance) override {
    box_.put_appearance(appearance);
  }
  platform::WindowHandle window() const override { return 0; }
  void put_owner(platform::WindowHandle) override {}
  void start_drag() override {}
  void listen(platform::BoxListener*) override {}

  int loads = 0;

 private:
  box::Box box_;
};

constexpr std::u16string_view all_properties =
    u"ActOnColors=False\nActOnFonts=False\nActOnPlain=False\nActOnStyles=False\nAllowEdits=False\n"
    u"BackColor=255\nBorderStyle=0\nConvertNLToSpace=False\nConvertTabsToSpace=False\n"
    u"Enabled=False\nFontName=Zed\nFontSize=12\nForeColor=1\nHideColor=2\nIgnoreColor=3\n"
    u"Lossless=True\nMultiline=1\nNoteColor=4\nOLEDragMode=1\nOLEDropMode=2\nPasteTextOnly=True\n"
    u"RecognizeCRLF=True\nRecognizeTabs=True\nRevealCodes=True\nScrollBars=3\nSelAlignment=2\n"
    u"ShowEditorOnShiftF2=True\nSmartQuotes=True\nTabStop=False\nText=a\\r\\n/b1b\n"
    u"TextQEL=a\\r\\n/b1b\nXPTheme=2\n";

TEST(Control, GivesBackWhatABagHolds) {
  test::Form form;
  QELTextbox control(form);
  control.ReadProperties(PropertyBag(all_properties));
  PropertyBag bag(u"Other=kept\n");
  control.WriteProperties(bag);
  const std::set<std::u16string> told(form.changed.begin(), form.changed.end());
  EXPECT_EQ(told.size(), 31U) << "all but one, each through its setter";
  for (const std::u16string& name : told) EXPECT_TRUE(bag.holds(name)) << test::shown(name);
  EXPECT_TRUE(bag.holds(u"Other")) << "names that nobody asks for stay";
  bag.write(u"Other", Variant(), Variant());
  EXPECT_EQ(bag.get_All(), all_properties);
  control.ReadProperties(PropertyBag(u"Text=plain\nTextQEL=/b1bold"));
  EXPECT_EQ(control.get_TextQEL(), u"/b1bold/b0") << "the later of the two";
}

TEST(Control, TakesDamagedValuesOneByOne) {
  test::Form form;
  QELTextbox control(form);
  control.ReadProperties(
      PropertyBag(u"FontSize=huge\nBackColor=1e99\nBorderStyle= 0 \nno "
                  u"line\n=\nAllowEdits=maybe\nMultiline=1\r\n"
                  u"FontName=a=b\nXPTheme=2.0\nTextQEL=x\\"));
  EXPECT_EQ(control.get_FontSize(), 8);
  EXPECT_EQ(control.get_BackColor(), system_color(5));
  EXPECT_EQ(control.get_BorderStyle(), 0);
  EXPECT_TRUE(control.get_AllowEdits());
  EXPECT_TRUE(control.get_Multiline());
  EXPECT_EQ(control.get_FontName(), u"a=b");
  EXPECT_EQ(control.get_XPTheme(), 2);
  EXPECT_EQ(control.get_TextQEL(), u"x\\");
  control.ReadProperties(Strangers());
  EXPECT_EQ(control.get_BackColor(), system_color(5)) << "a number that no colour can be";
  EXPECT_FALSE(control.get_TabStop());
  PropertyBag bag;
  bag.write(u"d", 0.1, 0.0);
  bag.write(u"f", 2.5F, 0.0F);
  bag.write(u"o", std::make_shared<std::shared_ptr<Object>::element_type>(), Variant());
  EXPECT_EQ(std::get<double>(bag.read(u"d", 7.0)), 0.1);
  EXPECT_EQ(bag.get_All(), u"d=0.1\nf=2.5\n") << "objects are not kept";
}

TEST(Control, HoldsTextInThreeForms) {
  test::Form form;
  QELTextbox control(form);
  control.put_TextQEL(u"/b1bold/b0 and /y2hidden/y0, /f2code/f0");
  EXPECT_EQ(control.get_TextRTF().substr(0, 6), u"{\\rtf1");
  form.runs = false;
  control.put_TextRTF(u"{\\rtf1 other}");
  EXPECT_EQ(control.get_TextRTF(), u"");
  EXPECT_EQ(control.get_Text(), u"bold and hidden, code") << "a form that is being designed";
  form.runs = true;
  control.put_TextRTF(u"{\\rtf1 \\i other\\par}");
  EXPECT_EQ(control.get_TextQEL(), u"/i1other/i0");
  EXPECT_EQ(control.RTFToQEL(u"{\\rtf1 a\\par b\\par}"), u"a b");
  control.put_Multiline(true);
  control.InsertCRLF();
  EXPECT_EQ(control.get_Text(), u"\r\n");
}

/// Text in which codes are cut by formats that RTF can say and by those that it cannot.
richtext::Document hostile_document(test::Random& random, const QELTextbox& control) {
  const std::vector<std::u16string_view> texts = {
      u"/",      u"/",    u"b1",   u"b",    u"1",          u"/f",    u"7",    u"/b1",
      u"/nl",    u"{",    u"}",    u" ",    u"\t",         u"word",  u"\\",   u"\u2013",
      u"\u00A0", u"\0"sv, u"\x01", u"\x7F", u"\U0001F600", u"\\par", u"\\'e9"};
  const auto digit = [&] { return static_cast<std::int16_t>(random.below(10)); };
  richtext::Document document;
  richtext::CharFormat format;
  for (std::size_t run = random.below(15); run > 0; --run) {
    const std::vector<std::function<void()>> changes = {
        [&] { format.bold = !format.bold; },
        [&] { format.italic = !format.italic; },
        [&] { format.underline = !format.underline; },
        [&] { format.strike_through = !format.strike_through; },
        [&] { format.small_caps = !format.small_caps; },
        [&] {
          format.offset = random.pick(std::vector<std::int16_t>{-60, -45, -9, 0, 9, 10, 41, 45});
        },
        [&] {
          format.size = random.pick(std::vector<float>{8, 8.1F, 8.2F, 10.5F});
        },
        [&] { format.color = random.one_in(4) ? 77 : control.GetColorGivenColorIndex(digit()); },
        [&] { format.font_name = control.GetFontNameGivenFontIndex(digit()); }};
    random.pick(changes)();
    const richtext::FormatPool::Id id = document.intern(format);
    document.append(random.text(texts, random.below(3)), id);
    if (random.one_in(4)) {
      document.append_break(id, static_cast<richtext::Alignment>(random.below(3)));
    }
  }
  return document;
}

/// Fonts and colours of which RTF makes something else than they are.
void put_odd_tables(QELTextbox& control) {
  const std::u16string_view fonts[] = {u"  Led", u"Led", u"", u"A;B", u"{\\b}", u"\tT"};
  for (std::int16_t i = 1; i <= 6; ++i) control.get_Fonts()->put_Font(i, fonts[i - 1]);
  control.get_Colors()->put_Color(3, 0x0100C000);
}

TEST(Control, ReadsRunsAsItWouldReadTheirRTF) {
  test::Form form;
  QELTextbox control(form);
  platform::RichEdit& box = *control.CurrentRichTextBox();
  for (std::uint32_t i = 0; i < 2000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    if (i == 1000) put_odd_tables(control);
    for (const auto put :
         {&QELTextbox::put_RecognizeCRLF, &QELTextbox::put_RecognizeTabs,
          &QELTextbox::put_ConvertNLToSpace, &QELTextbox::put_ConvertTabsToSpace}) {
      (control.*put)(random.one_in(2));
    }
    const auto part = [&] {
      return static_cast<std::int32_t>(random.below(box.get_Text().size() + 1));
    };
    box.put_content(platform::Scope::document, hostile_document(random, control));
    box.select({part(), part()});
    const std::u16string markup = control.get_TextQEL();
    const std::u16string rtf = control.get_TextRTF();
    const std::u16string selected = control.get_SelRTF();
    const auto hosts = std::make_shared<HostsBox>();
    Common::publish(Common::measuring_surface(), hosts);
    ASSERT_EQ(markup, control.get_TextQEL()) << test::shown(box.get_TextRTF());
    ASSERT_EQ(rtf, control.get_TextRTF());
    ASSERT_EQ(selected, control.get_SelRTF());
    ASSERT_GT(hosts->loads, 2) << "a box of the host's is asked";
  }
}

TEST(Control, PutsMarkupAsItWouldPutItsRTF) {
  test::Form form;
  QELTextbox control(form);
  platform::RichEdit& box = *control.CurrentRichTextBox();
  std::vector<std::u16string_view> vocabulary = test::markup_vocabulary();
  vocabulary.insert(vocabulary.end(),
                    {u"\r", u"\n", u"\0"sv, u"\x01", u"\\\\\\", u"b1", u"f0", u"/f5"});
  for (std::uint32_t i = 0; i < 2000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    if (i == 1000) put_odd_tables(control);
    control.get_Fonts()->put_FontSize(random.pick(std::vector<float>{10, 10.25F, 0}));
    control.put_SelAlignment(static_cast<std::int32_t>(random.below(3)));
    const platform::TextDefaults defaults = box.text_defaults(platform::Scope::document);
    const std::u16string markup = random.text(vocabulary, random.below(30));
    richtext::Document expected =
        richtext::read_document(control.QELToRTF(markup), defaults.format);
    expected.align({0, expected.size()}, defaults.alignment);
    control.put_TextQEL(markup);
    const richtext::Document content = box.content(platform::Scope::document);
    ASSERT_TRUE(content.check());
    ASSERT_TRUE(content == expected) << test::shown(markup) << "\n"
                                     << test::shown(box.get_TextRTF());
  }
}

TEST(Control, KeepsBlanksAndAlignment) {
  test::Form form;
  QELTextbox control(form);
  control.put_Multiline(true);
  control.put_Text(u"a\n  ");
  EXPECT_EQ(control.get_TextQEL(), u"a   ") << "the break is not at the end";
  for (const std::u16string_view text : {u"name: ", u" ", u"a  ", u"/p1x /p0"}) {
    control.put_TextQEL(text);
    EXPECT_EQ(control.get_TextQEL(), text) << test::shown(text);
  }
  test::Random random(test::base_seed());
  for (int i = 0; i < 300; ++i) {
    control.put_Text(random.text({u"a", u" ", u"\n", u"\t", u"\\", u"/b1", u"\u2019"}, 8));
    const std::u16string read = control.get_TextQEL();
    control.put_TextQEL(read);
    ASSERT_EQ(control.get_TextQEL(), read) << random.describe() << test::shown(read);
  }
  control.ReadProperties(headless::PropertyBag(u"SelAlignment=2\nTextQEL=a/b1b/b0"));
  EXPECT_EQ(control.get_SelAlignment(), 2);
  control.put_Text(u"one\ntwo");
  control.put_SelStart(5);
  control.put_SelAlignment(0);
  control.put_TextQEL(u"ab");
  EXPECT_EQ(control.get_SelAlignment(), 2) << "that of the first paragraph";
  EXPECT_EQ(control.get_SelLength(), 0);
  headless::PropertyBag bag;
  control.WriteProperties(bag);
  EXPECT_NE(bag.get_All().find(u"SelAlignment=2"), std::u16string::npos);
  control.InitProperties();
  EXPECT_EQ(control.get_Text(), u"");
  EXPECT_EQ(control.get_SelAlignment(), 0);
}

TEST(Control, LaysOutAndPaints) {
  test::Form form;
  QELTextbox control(form);
  control.Size(200, 90);
  control.Resize();
  const auto rectangle = [&] {
    const platform::BoxAppearance box = control.CurrentRichTextBox()->appearance();
    return std::vector<std::int32_t>{box.left, box.top, box.width, box.height};
  };
  EXPECT_EQ(rectangle(), (std::vector<std::int32_t>{1, 2, 198, 86}));
  EXPECT_EQ(control.frame(), (ControlFrame{199, 89, 0x00FF0000}));
  control.put_BorderStyle(0);
  EXPECT_EQ(rectangle(), (std::vector<std::int32_t>{0, 0, 199, 89}));
  EXPECT_EQ(control.frame().color, system_color(5)) << "a line that nobody sees";
  const auto single = control.CurrentRichTextBox();
  EXPECT_TRUE(single->appearance().visible);
  control.put_Multiline(true);
  EXPECT_EQ(rectangle(), (std::vector<std::int32_t>{0, 0, 199, 89}));
  EXPECT_TRUE(control.CurrentRichTextBox()->appearance().visible);
  EXPECT_FALSE(single->appearance().visible);
  EXPECT_EQ(form.paints, 2);
  control.put_XPTheme(1);
  control.put_Enabled(false);
  EXPECT_EQ(form.paints, 4);
  EXPECT_FALSE(form.enabled);
  EXPECT_FALSE(single->appearance().enabled);
  control.SetFocus();
  EXPECT_EQ(form.focuses, 1);
  EXPECT_EQ(control.get_hDC(), 17U);
}

TEST(Control, TakesItsBorderFromTheDesktop) {
  struct Row {
    std::u16string_view name;
    std::optional<std::u16string> scheme;
    Color border;
  };
  const Row rows[] = {{u"", std::nullopt, 0x00B99D7F},
                      {u"Green", u"HomeStead", 0x0054C190},
                      {u"Blue", u"NormalColor", 0x00B99D7F},
                      {u"Silver", u"Metallic", 0x00B99D7F}};
  test::Form form;
  const auto platform = std::make_shared<StyledPlatform>();
  QELTextbox control(form, platform);
  for (const Row& row : rows) {
    platform->scheme = row.scheme;
    control.put_Enabled(true);
    EXPECT_EQ(control.XPThemeColor(), row.name);
    EXPECT_EQ(control.border_color(), row.border) << test::shown(row.name);
  }
  control.put_XPTheme(2);
  EXPECT_EQ(control.border_color(), 0x00B99D7F) << "until the control is enabled anew";
  control.put_Enabled(true);
  EXPECT_EQ(control.border_color(), 0x0054C190);
  platform->fails = true;
  control.put_XPTheme(0);
  control.put_Enabled(true);
  EXPECT_EQ(control.border_color(), 0x00B99D7F);
  control.put_Enabled(false);
  EXPECT_EQ(control.border_color(), 0x00BAC7C9);
}

TEST(Control, LooksThingsUp) {
  test::Form form;
  QELTextbox control(form);
  EXPECT_EQ(control.GetFontIndexGivenFontName(u"SYMBOL"), 1);
  EXPECT_EQ(control.GetColorIndexGivenColor(255), 5);
  EXPECT_TRUE(QELTextbox::IsQELCode(u"/nl"));
  EXPECT_FALSE(QELTextbox::IsQELCode(u"/b1", sfOffCode));
  const std::pair<std::u16string_view, std::u16string_view> rows[] = {
      {u"41", u"A"}, {u"0A", u""}, {u"F", u"\u00FF"},  {u"8z0", u"\u20AC"},
      {u"", u""},    {u"x9", u""}, {u"e9", u"\u00E9"}, {u"20", u" "}};
  for (const auto& [hex, character] : rows) {
    EXPECT_EQ(QELTextbox::HexToChar(hex), character) << test::shown(hex);
  }
}

TEST(Control, LeavesNoDanglingSlot) {
  test::Form form;
  auto first = std::make_unique<QELTextbox>(form);
  const auto surface = Common::measuring_surface();
  auto second = std::make_unique<QELTextbox>(form);
  EXPECT_NE(Common::measuring_surface(), surface) << "the last control wins";
  second.reset();
  EXPECT_EQ(Common::measuring_surface(), surface) << "and hands the slot back";
  first->put_TextQEL(u"/b1x");
  EXPECT_EQ(first->get_TextQEL(), u"/b1x/b0");
}

}  // namespace
}  // namespace qel
