#pragma once

#include <initializer_list>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

/// Stands in for the desktop while it lives: takes the addresses of some schemes, and notes them.
class COpenedUrls : public QObject
{
    Q_OBJECT

public:
    COpenedUrls(std::initializer_list<const char*> schemes) : m_aSchemes(schemes)
    {
        for (const char* pScheme : m_aSchemes)
            QDesktopServices::setUrlHandler(pScheme, this, "slotOpen");
    }
    ~COpenedUrls() override
    {
        for (const char* pScheme : m_aSchemes)
            QDesktopServices::unsetUrlHandler(pScheme);
    }

    /// The addresses so far, one a line.
    QString seen() const { return m_strSeen; }

public slots:
    void slotOpen(const QUrl& url) { m_strSeen += url.toString() + '\n'; }

private:
    std::vector<const char*> m_aSchemes;
    QString m_strSeen;
};
