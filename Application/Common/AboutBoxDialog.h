#pragma once

#include <memory>
#include <string>

#include <QtCore/QString>
#include <QtWidgets/QDialog>

class Preferences;
class QImage;
namespace Ui
{
class AboutBoxClass;
}

/// Name, version and links over the splash picture. Not modal: it leaves at a press of the mouse in the parent's window, and stays in
/// the middle of it until then.
class AboutBoxDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param strNameAndVersion  the program's
    /// @param strImage           path of the picture; without one the box keeps the desktop's colours
    /// @param pPreferences       holds whether the box shows at start-up; not owned, may be null: then it does
    /// @param strUses            libraries and their versions
    AboutBoxDialog(const QString& strNameAndVersion, const QString& strImage, Preferences* pPreferences, const QString& strUses,
                   QWidget* pParent);
    ~AboutBoxDialog() override;

    /// Shows the box in the middle of the parent.
    void showCentred();
    [[nodiscard]] bool getShowAtStartUp() const;

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

protected:
    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;

private slots:
    void onCheckBoxStateChanged(int iState);
    void launchLink(const QString& strLink);

private:
    void setBackground(const QImage& image);
    void moveToCentre();

    std::unique_ptr<Ui::AboutBoxClass> m_pForm;
    Preferences* m_pPreferences;
    std::string m_strKey;
};
