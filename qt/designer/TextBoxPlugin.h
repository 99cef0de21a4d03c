#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace qel::qt {

/// Makes `TextBox` known to Qt Designer and the form loader. A box that Designer creates is at
/// design time and has its properties in groups; one that the form loader creates is at run time.
class TextBoxPlugin : public QObject, public QDesignerCustomWidgetInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QDesignerCustomWidgetInterface_iid FILE "TextBoxPlugin.json")
  Q_INTERFACES(QDesignerCustomWidgetInterface)

 public:
  QString name() const override;
  QString group() const override;
  QString toolTip() const override;
  QString whatsThis() const override;
  QString includeFile() const override;
  QIcon icon() const override;
  bool isContainer() const override { return false; }
  QWidget* createWidget(QWidget* parent) override;
  /// Designer calls this, the form loader does not.
  void initialize(QDesignerFormEditorInterface* core) override { core_ = core; }
  bool isInitialized() const override { return core_ != nullptr; }
  QString domXml() const override;

 private:
  QDesignerFormEditorInterface* core_ = nullptr;
};

}  // namespace qel::qt
