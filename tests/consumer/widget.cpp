#include <QApplication>
#include <QSettings>

#include "qel/qt/FindBar.h"
#include "qel/qt/FormatBar.h"
#include "qel/qt/PainterCanvas.h"
#include "qel/qt/Printing.h"
#include "qel/qt/PropertyBags.h"
#include "qel/qt/QtPlatform.h"
#include "qel/qt/Speller.h"
#include "qel/qt/TextBox.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  qel::qt::TextBox box;
  box.setProperty("TextQEL", "plain and /b1bold/b0");
  qel::qt::FormatBar bar;
  bar.follow(&box);
  QSettings settings("consumer.ini", QSettings::IniFormat);
  qel::qt::SettingsBag bag(settings);
  box.control().WriteProperties(bag);
  box.put_Speller(qel::qt::Speller::of_language("en_US"));
  qel::qt::FindBar find;
  find.follow(&box);
  find.put_text("bold");
  find.find_next();
  if (box.control().get_SelText() != u"bold") return 2;
  return bar.box() == &box && box.get_Text() == "plain and bold" && !qel::qt::pdf_of(box).isEmpty()
             ? 0
             : 1;
}
