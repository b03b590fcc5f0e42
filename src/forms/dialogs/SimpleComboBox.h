// A combo box whose list is always shown under its text box (the classic "simple" combo): the
// author types a name or picks one, and a double-click on a row is the dialog's main button.
#pragma once

#include <QWidget>

class QLineEdit;
class QListWidget;

namespace lumora {

class SimpleComboBox : public QWidget {
    Q_OBJECT
  public:
    explicit SimpleComboBox(QWidget* parent = nullptr);

    QString currentText() const;
    void setCurrentText(const QString& text);
    void addItem(const QString& text);
    void clear();
    int count() const;

    QLineEdit* lineEdit() const { return edit_; }
    QListWidget* list() const { return list_; }

  signals:
    // A row was double-clicked; the text box already holds its text.
    void itemDoubleClicked(const QString& text);

  private:
    void followTyping(const QString& text);

    QLineEdit* edit_;
    QListWidget* list_;
};

} // namespace lumora
