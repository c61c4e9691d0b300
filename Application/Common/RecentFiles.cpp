#include "Common/RecentFiles.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QtCore/QFile>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>

#include "Common/Fnv1.h"
#include "Common/Preferences.h"

namespace
{

constexpr char k_acSeparatorName[] = "TheRecentFileSeparator";
constexpr int k_iLongestWhole = 45; ///< characters of a path that is shown whole

bool isMissing(const std::string& strPath)
{
    return !QFile::exists(QString::fromStdString(strPath));
}

/// The form in which paths are compared.
std::string withOneSeparator(std::string strPath)
{
    std::replace(strPath.begin(), strPath.end(), '\\', '/');
    return strPath;
}

/// An "&" in a menu underlines the letter after it; two stand for the character itself. What follows a tab would be shown as a
/// shortcut.
QString getActionText(int iNumber, const QString& strPath)
{
    return QString("%1 %2").arg(QString::number(iNumber), getShortPath(strPath).replace('&', "&&").replace('\t', ' '));
}

void showFile(QAction& action, int iNumber, const std::string& strPath)
{
    const QString strFile = QString::fromStdString(strPath);
    const QString strText = getActionText(iNumber, strFile);
    if (action.property(k_acRecentFileProperty).toString() == strFile && action.text() == strText)
        return;
    action.setProperty(k_acRecentFileProperty, strFile);
    action.setText(strText);
    action.setToolTip(strFile);
}

/// Not at once: it may be the one whose choice the program is working on.
void removeAction(QMenu& menu, QAction* pAction)
{
    menu.removeAction(pAction);
    pAction->deleteLater();
}

} // namespace

QString getShortPath(const QString& strPath)
{
    const int iSurplus = strPath.size() - k_iLongestWhole;
    if (iSurplus <= 0)
        return strPath;
    const int iStart = strPath.indexOf('/') + 1;
    int iEnd = strPath.indexOf('/', iStart + iSurplus);
    if (iEnd < 0)
        iEnd = iStart + iSurplus;
    // A character of two halves goes as a whole.
    if (iEnd < strPath.size() && strPath[iEnd].isLowSurrogate())
        ++iEnd;
    return QString(strPath).replace(iStart, iEnd - iStart, "...");
}

RecentFiles::RecentFiles(Preferences* pPreferences, uint32_t ui32MaxFiles, const QString& strPrefix, uint32_t ui32Options, QObject* pParent)
    : QObject(pParent),
      m_pPreferences(pPreferences),
      m_ui32MaxFiles(ui32MaxFiles),
      m_strPrefix(strPrefix.toStdString() + "/"),
      m_strKey(m_strPrefix + "Recent files"),
      m_ui32Options(ui32Options)
{
}

void RecentFiles::setMenu(QMenu* pMenu)
{
    m_pMenu = pMenu;
    pMenu->addSeparator()->setObjectName(k_acSeparatorName);
    QAction* pClear = pMenu->addAction("Clear recent files");
    pClear->setObjectName("Act_Clear_Recent_Files");
    connect(pClear, &QAction::triggered, this, &RecentFiles::clear);
    connect(pClear, &QAction::triggered, this, &RecentFiles::refresh);
    connect(pMenu, &QMenu::aboutToShow, this, &RecentFiles::refresh);
    refresh();
}

void RecentFiles::refresh()
{
    std::deque<std::string> list;
    if (readList(list))
        updateMenu(std::move(list), (m_ui32Options & eRecentFilesSkipMissing) != 0);
}

void RecentFiles::clear()
{
    if (storeList({}))
        m_pPreferences->save();
}

void RecentFiles::addFile(const QString& strNewFile, const QByteArray& data)
{
    const std::string strFile = strNewFile.toStdString();
    if ((m_ui32Options & eRecentFilesSkipMissing) != 0 && isMissing(strFile))
        return;
    std::deque<std::string> list;
    if (!readList(list))
        list.clear(); // what is there is no list, or can't be written either
    const auto same = [strWanted = withOneSeparator(strFile)](const std::string& strEntry)
    { return withOneSeparator(strEntry) == strWanted; };
    list.erase(std::remove_if(list.begin(), list.end(), same), list.end());
    list.push_front(strFile);
    if (list.size() > m_ui32MaxFiles)
        list.resize(m_ui32MaxFiles);
    if (!storeList(list))
        return;
    if (!data.isEmpty())
        storeData(strNewFile, data);
    m_pPreferences->save();
    // The menu of an empty list is disabled, so that it would not open and find the new file by itself.
    updateMenu(std::move(list), false);
}

void RecentFiles::fileSelected()
{
    const QObject* pSender = sender();
    if (pSender == nullptr)
        return;
    const QString strPath = pSender->property(k_acRecentFileProperty).toString();
    std::vector<uint8_t> bytes;
    if (m_pPreferences != nullptr)
        m_pPreferences->getData(getDataKey(strPath), bytes);
    emit triggered(strPath, QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size())));
}

/// The list, of which no more than the most files count, whatever another program has stored.
/// @return false where there is something that can't be read; no list at all is an empty one
bool RecentFiles::readList(std::deque<std::string>& list) const
{
    if (m_pPreferences == nullptr)
        return false;
    std::vector<std::string> files;
    const Preferences::EResult eResult = m_pPreferences->getTextArray(m_strKey, files);
    files.resize(std::min<size_t>(files.size(), m_ui32MaxFiles));
    list.assign(files.begin(), files.end());
    return eResult == Preferences::eDone || eResult == Preferences::eKeyNotFound;
}

bool RecentFiles::storeList(const std::deque<std::string>& list)
{
    return m_pPreferences != nullptr && m_pPreferences->setTextArray(m_strKey, {list.begin(), list.end()}) == Preferences::eDone;
}

void RecentFiles::storeData(const QString& strPath, const QByteArray& data)
{
    const auto* pui8Bytes = reinterpret_cast<const uint8_t*>(data.constData());
    m_pPreferences->setData(getDataKey(strPath), pui8Bytes, static_cast<size_t>(data.size()));
}

std::string RecentFiles::getDataKey(const QString& strPath) const
{
    return m_strPrefix + std::to_string(fnv1(strPath.toStdString()));
}

/// Gives each of the menu's files in turn the next file of the list, and makes or removes actions at the end.
/// @param bDropMissing  a shown file that no longer exists leaves menu and list
void RecentFiles::updateMenu(std::deque<std::string> list, bool bDropMissing)
{
    if (m_pMenu.isNull())
        return;
    auto* pSeparator = m_pMenu->findChild<QAction*>(k_acSeparatorName, Qt::FindDirectChildrenOnly);
    if (pSeparator == nullptr)
        return;

    const size_t uiBefore = list.size();
    size_t uiShown = 0;
    for (QAction* pAction : m_pMenu->actions())
    {
        if (!pAction->property(k_acRecentFileProperty).isValid())
            continue;
        if (uiShown < list.size() && bDropMissing && isMissing(list[uiShown]))
        {
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(uiShown));
            removeAction(*m_pMenu, pAction);
        }
        else if (uiShown < list.size())
        {
            showFile(*pAction, static_cast<int>(uiShown) + 1, list[uiShown]);
            ++uiShown;
        }
        else
            removeAction(*m_pMenu, pAction);
    }
    if (list.size() != uiBefore && storeList(list))
        m_pPreferences->save();

    for (; uiShown < list.size(); ++uiShown)
    {
        auto* pAction = new QAction(m_pMenu);
        showFile(*pAction, static_cast<int>(uiShown) + 1, list[uiShown]);
        connect(pAction, &QAction::triggered, this, &RecentFiles::fileSelected);
        m_pMenu->insertAction(pSeparator, pAction);
    }
    m_pMenu->setEnabled(!list.empty());
}
