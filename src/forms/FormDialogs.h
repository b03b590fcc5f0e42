// The common dialogs the main form asks things with: the file-open dialog of media insertion
// and the colour dialog of the font colour button. Behind an interface so that GUI tests answer
// them as they answer the prompt.
#pragma once

#include <QColor>
#include <QString>

#include <optional>

class QWidget;

namespace lumora {

class FormDialogs {
  public:
    virtual ~FormDialogs() = default;
    // An existing file chosen with the open dialog (filter in Qt's form, its first entry
    // selected); empty when the author cancelled.
    virtual QString openFile(QWidget* parent, const QString& filter) = 0;
    // No value when the author cancelled.
    virtual std::optional<QColor> color(QWidget* parent, const QColor& initial) = 0;
};

// QFileDialog and QColorDialog.
class QtFormDialogs : public FormDialogs {
  public:
    QString openFile(QWidget* parent, const QString& filter) override;
    std::optional<QColor> color(QWidget* parent, const QColor& initial) override;

  private:
    QString lastFolder_; // the next file dialog opens where the last one ended
};

} // namespace lumora
