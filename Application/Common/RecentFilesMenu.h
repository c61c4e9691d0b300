#pragma once

#include <QtCore/QString>
#include <QtWidgets/QMenu>

/// A menu that shows the tool tips of its recent files, which menus don't do by themselves.
class RecentFilesMenu : public QMenu
{
    Q_OBJECT

public:
    explicit RecentFilesMenu(const QString& strTitle, QWidget* pParent = nullptr);

protected:
    bool event(QEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
};
