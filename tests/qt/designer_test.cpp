// The plug-in of Qt Designer: what it says of the widget, and forms that are loaded and saved.

#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QIcon>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QTest>
#include <QTextEdit>
#include <QUiLoader>
#include <QVBoxLayout>
#include <QtDesigner/QFormBuilder>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <map>
#include <memory>

#include "qel/qt/TextBox.h"
#include "qt/Printing.h"
#include "ui_letter.h"

namespace qel::qt {
namespace {

const QString plugin_folder = QStringLiteral(QEL_PLUGIN_DIR);
const QString letter_form = QStringLiteral(QEL_TEST_DIR "/qt/forms/letter.ui");

using Values = std::map<QString, QVariant>;

/// The values that the form sets, and some that it leaves alone.
const Values subject_values = {{"Multiline", false},
                               {"BackColor", 0xE0FFFF},
                               {"SmartQuotes", true},
                               {"TextQEL", "An /i1urgent/i0 matter"},
                               {"PlaceholderText", "Subject"},
                               {"FontName", "Arial"},
                               {"FontSize", 8.0},
                               {"OLEDropMode", 1}};
const Values body_values = {
    {"FontName", "Georgia"},
    {"FontSize", 11.5},
    {"Multiline", true},
    {"OLEDropMode", 2},
    {"RecognizeCRLF", true},
    {"ScrollBars", 2},
    {"TextQEL", QStringLiteral(u"Dear /b1Anna & Bob/b0,/nlthe tea is /y2out/y0 \u2013 "
                               u"x/p12/p0 <soon>.")},
    {"Text", QStringLiteral(u"Dear Anna & Bob,\r\nthe tea is out \u2013 x2 <soon>.")},
    {"toolTip", "What to say"},
    {"database field", "letters.body"},
    {"SmartQuotes", false}};

void expect_values(const QWidget* box, const Values& values) {
  ASSERT_NE(box, nullptr);
  EXPECT_STREQ(box->metaObject()->className(), "qel::qt::TextBox");
  for (const auto& [name, value] : values) {
    const QVariant actual = box->property(name.toLatin1());
    EXPECT_EQ(actual, value) << qPrintable(name) << ": " << qPrintable(actual.toString());
  }
}

void expect_same(const Values& actual, const Values& expected) {
  EXPECT_EQ(actual.size(), expected.size());
  for (const auto& [name, value] : expected) {
    const auto found = actual.find(name);
    const QVariant other = found == actual.end() ? QVariant() : found->second;
    EXPECT_EQ(other, value) << qPrintable(name) << ": " << qPrintable(other.toString());
  }
}

/// The values that a form keeps of a text box: its own properties and one of Qt's.
Values all_values(const QWidget& box) {
  Values values;
  const QMetaObject& meta = *box.metaObject();
  values["toolTip"] = box.toolTip();
  for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
    values[QLatin1String(meta.property(i).name())] = meta.property(i).read(&box);
  }
  return values;
}

/// A form's box of that name. The plug-in contains its own copy of the library, so no cast finds
/// it.
QWidget* box_in(const QWidget& form, const char* name) {
  return form.findChild<QWidget*>(QLatin1String(name));
}

QWidget* typing_place(const QWidget& box) { return qobject_cast<QTextEdit*>(box.focusProxy()); }

std::unique_ptr<QWidget> load(QFormBuilder& builder, QByteArray form) {
  QBuffer buffer(&form);
  buffer.open(QIODevice::ReadOnly);
  return std::unique_ptr<QWidget>(builder.load(&buffer));
}

QByteArray save(QFormBuilder& builder, QWidget& form) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  builder.save(&buffer, &form);
  return buffer.data();
}

QByteArray read_letter() {
  QFile file(letter_form);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return file.readAll();
}

class Builder : public QFormBuilder {
 public:
  Builder() { setPluginPath({plugin_folder}); }
};

QObject* plugin() {
  QPluginLoader loader(plugin_folder + QStringLiteral("/qel_designer"));
  QObject* const instance = loader.instance();
  EXPECT_NE(instance, nullptr) << qPrintable(loader.errorString());
  const QJsonObject about = loader.metaData();
  EXPECT_EQ(about.value(QStringLiteral("IID")).toString(),
            QLatin1String(QDesignerCustomWidgetInterface_iid));
  EXPECT_FALSE(about.value(QStringLiteral("debug")).isUndefined());
  return instance;
}

TEST(Designer, FormLoaderMakesTheBoxesOfAForm) {
  QUiLoader loader;
  loader.addPluginPath(plugin_folder);
  EXPECT_TRUE(loader.availableWidgets().contains(QStringLiteral("qel::qt::TextBox")));
  QFile file(letter_form);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const std::unique_ptr<QWidget> form(loader.load(&file));
  ASSERT_NE(form, nullptr) << qPrintable(loader.errorString());
  const QWidget* const body = box_in(*form, "body");
  expect_values(box_in(*form, "subject"), subject_values);
  expect_values(body, body_values);
  EXPECT_STREQ(body->metaObject()->userProperty().name(), "TextQEL");
  EXPECT_EQ(form->layout()->count(), 2);
}

TEST(Designer, FormCompiledIntoAProgramHasTheSameBoxes) {
  QWidget form;
  Ui::Letter letter;
  letter.setupUi(&form);
  expect_values(letter.subject, subject_values);
  expect_values(letter.body, body_values);
  EXPECT_TRUE(letter.body->is_run_time());
}

TEST(Designer, FormKeepsItsTextOverSavingAndLoading) {
  Builder builder;
  std::unique_ptr<QWidget> form = load(builder, read_letter());
  ASSERT_NE(form, nullptr) << qPrintable(builder.errorString());
  form->show();
  QApplication::processEvents();
  QWidget* const subject = box_in(*form, "subject");
  QWidget* const body = box_in(*form, "body");
  QTest::keyClick(typing_place(*body), Qt::Key_End, Qt::ControlModifier);
  QTest::keyClick(typing_place(*body), Qt::Key_B, Qt::ControlModifier);
  QTest::keyClicks(typing_place(*body), QStringLiteral(" P.S. <&> \"x\""));
  QTest::keyClick(typing_place(*body), Qt::Key_Return);
  QTest::keyClick(typing_place(*subject), Qt::Key_Home);
  QTest::keyClicks(typing_place(*subject), QStringLiteral("\"Re\": "));
  subject->setProperty("AllowEdits", false);
  const Values subject_before = all_values(*subject);
  const Values body_before = all_values(*body);
  EXPECT_EQ(subject_before.at("TextQEL"),
            QStringLiteral(u"\u201CRe\u201D: An /i1urgent/i0 matter"));
  EXPECT_TRUE(
      body_before.at("TextQEL").toString().endsWith(QStringLiteral("/b1 P.S. <&> \"x\"/nl/b0")))
      << qPrintable(body_before.at("TextQEL").toString());

  const qsizetype widgets = form->findChildren<QWidget*>().size();
  for (int i = 0; i < 3; ++i) {
    // Qt warns of each property that such a file cannot hold.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    form = load(builder, save(builder, *form));
    qInstallMessageHandler(nullptr);
    ASSERT_NE(form, nullptr) << qPrintable(builder.errorString());
    SCOPED_TRACE(i);
    expect_same(all_values(*box_in(*form, "subject")), subject_before);
    expect_same(all_values(*box_in(*form, "body")), body_before);
    EXPECT_EQ(form->findChildren<QWidget*>().size(), widgets) << "a form does not grow";
  }
}

TEST(Designer, TellsOfTheWidget) {
  auto* const widget = qobject_cast<QDesignerCustomWidgetInterface*>(plugin());
  ASSERT_NE(widget, nullptr);
  EXPECT_EQ(widget->name(), QStringLiteral("qel::qt::TextBox"));
  EXPECT_EQ(widget->group(), QStringLiteral("QEL"));
  EXPECT_TRUE(QFile::exists(QStringLiteral(QEL_SOURCE_DIR "/qt/include/") + widget->includeFile()));
  const QImage icon = widget->icon().pixmap(48).toImage();
  EXPECT_EQ(icon.width(), 48);
  EXPECT_EQ(icon.pixelColor(icon.rect().center()).alpha(), 255);
  Builder builder;
  const std::unique_ptr<QWidget> dropped = load(builder, widget->domXml().toUtf8());
  ASSERT_NE(dropped, nullptr) << qPrintable(builder.errorString());
  expect_values(dropped.get(), {{"TextQEL", "Text in /b1bold/b0 and /i1italic/i0"},
                                {"Multiline", true},
                                {"size", QSize(240, 96)}});
}

}  // namespace
}  // namespace qel::qt
