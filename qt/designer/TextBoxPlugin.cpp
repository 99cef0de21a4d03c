#include "qt/designer/TextBoxPlugin.h"

#include <QIcon>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QExtensionManager>
#include <array>

#include "qel/qt/TextBox.h"

namespace qel::qt {

namespace {

struct Group {
  const char* name;
  std::array<const char*, 11> properties;  // null where there are fewer
};

constexpr std::array groups = {
    Group{"Text", {"Text", "TextQEL", "PlaceholderText", "SelAlignment", "RevealCodes"}},
    Group{"Editing",
          {"AllowEdits", "Enabled", "Multiline", "PasteTextOnly", "SmartQuotes", "TabStop",
           "AsksBeforeClosing", "ChecksSpelling", "SpellingLanguage"}},
    Group{"Conversion",
          {"RecognizeCRLF", "RecognizeTabs", "ConvertNLToSpace", "ConvertTabsToSpace"}},
    Group{"Look",
          {"FontName", "FontSize", "ForeColor", "BackColor", "HideColor", "IgnoreColor",
           "NoteColor", "BorderStyle", "ScrollBars", "XPTheme"}},
    Group{"View", {"Zoom", "LineSpacing", "TextMargin", "AdaptsColors", "OpensLinks"}},
    Group{"Drag and drop", {"OLEDragMode", "OLEDropMode"}},
    Group{"Keys",
          {"ActOnStyles", "ActOnFonts", "ActOnColors", "ActOnPlain", "ShowEditorOnShiftF2"}},
};

void group_properties(QDesignerPropertySheetExtension& sheet) {
  for (const Group& group : groups) {
    for (const char* const property : group.properties) {
      const int index = property == nullptr ? -1 : sheet.indexOf(QLatin1String(property));
      if (index >= 0) sheet.setPropertyGroup(index, QLatin1String(group.name));
    }
  }
}

}  // namespace

QString TextBoxPlugin::name() const { return QStringLiteral("qel::qt::TextBox"); }
QString TextBoxPlugin::group() const { return QStringLiteral("QEL"); }
QString TextBoxPlugin::toolTip() const { return QStringLiteral("Text box for formatted text"); }

QString TextBoxPlugin::whatsThis() const {
  return QStringLiteral(
      "Lets the user edit text in bold, italic, fonts and colours, in one line or in many. Its "
      "text is kept as markup in the property TextQEL.");
}

QString TextBoxPlugin::includeFile() const { return QStringLiteral("qel/qt/TextBox.h"); }
QIcon TextBoxPlugin::icon() const { return QIcon(QStringLiteral(":/qel/designer/textbox.png")); }

QWidget* TextBoxPlugin::createWidget(QWidget* parent) {
  auto* const box = new TextBox(parent);
  if (core_ == nullptr) return box;
  box->put_RunTime(false);
  if (QExtensionManager* const extensions = core_->extensionManager()) {
    if (auto* const sheet = qt_extension<QDesignerPropertySheetExtension*>(extensions, box)) {
      group_properties(*sheet);
    }
  }
  return box;
}

QString TextBoxPlugin::domXml() const {
  return QStringLiteral(R"(<ui language="c++" displayname="Text Box">
  <widget class="qel::qt::TextBox" name="textBox">
    <property name="geometry">
      <rect><x>0</x><y>0</y><width>240</width><height>96</height></rect>
    </property>
    <property name="Multiline"><bool>true</bool></property>
    <property name="TextQEL"><string>Text in /b1bold/b0 and /i1italic/i0</string></property>
  </widget>
  <customwidgets>
    <customwidget>
      <class>qel::qt::TextBox</class>
      <extends>QWidget</extends>
      <propertyspecifications>
        <stringpropertyspecification name="Text" type="multiline"/>
        <stringpropertyspecification name="TextQEL" type="multiline"/>
        <tooltip name="TextQEL">The text as markup: /b1bold/b0, /i1italic/i0, /nl for a line</tooltip>
        <tooltip name="BackColor">0x00BBGGRR, or negative for a colour of the system</tooltip>
        <tooltip name="ForeColor">0x00BBGGRR, or negative for a colour of the system</tooltip>
      </propertyspecifications>
    </customwidget>
  </customwidgets>
</ui>)");
}

}  // namespace qel::qt
