#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

class Preferences;
class QAction;
class QMenu;

/// Dynamic property of the actions that stand for a recent file: its path.
constexpr char k_acRecentFileProperty[] = "ARecentFile";

enum ERecentFilesOptions : uint32_t
{
    eRecentFilesNone = 0,
    eRecentFilesSkipMissing = 2 ///< files that no longer exist are not taken, and leave the list when the menu opens
};

/// The list of files opened last, newest first, in the preferences, and the menu that offers them. The preferences are the only
/// place that holds the list, so that two running programs see one list.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    /// @param pPreferences  not owned, and must outlive this; may be null: then the list stays empty
    /// @param strPrefix     of the keys in the preferences, without the "/" at its end
    RecentFiles(Preferences* pPreferences, uint32_t ui32MaxFiles, const QString& strPrefix, uint32_t ui32Options,
                QObject* pParent = nullptr);

    /// Fills the menu and keeps it up to date. To be called once; the menu is not owned.
    void setMenu(QMenu* pMenu);

public slots:
    /// Brings the menu in line with the list, and drops files that no longer exist where the options want that. While the
    /// preferences can't be read, list and menu stay as they are.
    void refresh();
    /// Empties the list.
    void clear();
    /// Puts a file at the front of the list; paths that differ only in "/" and "\" are one. The path is kept as it is given.
    /// @param data  kept with the path where not empty, and handed back by triggered()
    void addFile(const QString& strNewFile, const QByteArray& data);
    /// The user chose the file of the sender, one of the menu's actions.
    void fileSelected();

signals:
    void triggered(const QString& strPath, const QByteArray& data);

private:
    bool readList(std::deque<std::string>& list) const;
    bool storeList(const std::deque<std::string>& list);
    void storeData(const QString& strPath, const QByteArray& data);
    std::string getDataKey(const QString& strPath) const;
    void updateMenu(std::deque<std::string> list, bool bDropMissing);

    Preferences* m_pPreferences;
    QPointer<QMenu> m_pMenu;
    uint32_t m_ui32MaxFiles;
    std::string m_strPrefix; ///< with the "/" at its end
    std::string m_strKey;
    uint32_t m_ui32Options;
};

/// @return a path of more than 45 characters with "..." in place of its middle, so that its root and the file's name stay
[[nodiscard]] QString getShortPath(const QString& strPath);
