#pragma once

#include <QDialog>

#include <memory>

class Bookmark;
class BookmarkPlace;
class ChosenFolder;
class DialogKeys;
class FolderChoice;
class Prompt;
class QGridLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

/// The dialog in which a new bookmark is typed or the selected one is edited. It
/// fills its fields when it is first shown, with exec(), and hands them to the
/// archive when they are confirmed. Whoever opens it switches drops off meanwhile.
///
/// Nobody may change the archive's selection while the dialog is open.
class frmBMProperty : public QDialog {
    Q_OBJECT
public:
    /// `place` and `prompt` outlive the dialog.
    frmBMProperty(BookmarkPlace& place, Prompt& prompt, const QIcon& icon, QWidget* parent);

    /// True: a new bookmark is added to the selected folder. False, as at first:
    /// the selected bookmark is edited. To be set before the dialog is shown.
    void bNewBkm(bool value) { m_isNew = value; }
    bool bNewBkm() const { return m_isNew; }

    /// Fills the fields; the bookmark that will be changed stays the same.
    void TakeBookmark(const Bookmark& bookmark);

    /// Lets the user choose the folder of a new bookmark, too: in `place`, which is the place of
    /// the dialog. The folder with `first` as its file comes first.
    void offerFolders(ChosenFolder& place, const QString& first);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildControls();
    void setKeys();

    void Form_Load();
    void fill(const Bookmark& bookmark);
    void Ok_Click();
    bool IsInputComplete() const;
    bool IsUrlNew() const;
    void StoreNewBookmark();
    void StoreChangedBookmark();
    void store(void (frmBMProperty::*how)());
    /// The description as the archive holds it.
    QString info() const;

    BookmarkPlace& m_place;
    Prompt& m_prompt;
    DialogKeys* m_keys;
    bool m_isNew = false;
    bool m_isLoaded = false;
    std::shared_ptr<Bookmark> m_bookmark; ///< the one to change; null for a new one
    QLineEdit* m_text1 = nullptr;         ///< the name
    QLineEdit* m_text2 = nullptr;         ///< the address
    QPlainTextEdit* m_text3 = nullptr;    ///< the description
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    QGridLayout* m_fields = nullptr;
    FolderChoice* m_folders = nullptr; ///< null unless folders are offered
};
