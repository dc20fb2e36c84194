#pragma once

#include "base/DialogKeys.h"

#include <QObject>

class ChosenFolder;
class ElidedLabel;
class Prompt;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;
class QWidget;

/// The rows of the properties dialog in which the user chooses the folder of a bookmark, or
/// names a new one, and reads in which folders its address is already.
class FolderChoice : public QObject {
    Q_OBJECT
public:
    /// Adds its rows below those in `grid`. The folder with `first` as its file comes first.
    /// `place` outlives this, which belongs to `dialog`.
    FolderChoice(ChosenFolder& place, const QString& first, QWidget* dialog, QGridLayout& grid);

    /// Puts the controls behind `before` in the order of Tab.
    void followInTabOrder(QWidget* before) const;
    void setKeys(DialogKeys& keys, const DialogKeys::Action& ok, const DialogKeys::Action& close);
    /// Says from now on where the address in this field is already.
    void watch(QLineEdit& address);

    /// Tells the user why a new folder cannot have its name, and returns false then.
    bool isGood(Prompt& prompt);

private:
    void build(QWidget& dialog, QGridLayout& grid);
    void fill(const QString& first);
    void switchToNew(bool isNew);
    void choose();

    ChosenFolder& m_place;
    QComboBox* m_folders = nullptr;
    QLineEdit* m_newName = nullptr;
    QWidget* m_newBox = nullptr; ///< with what is said of the name
    QPushButton* m_new = nullptr;
    ElidedLabel* m_known = nullptr;
};
