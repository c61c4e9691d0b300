#pragma once

#include <cstdint>
#include <memory>

#include <QtCore/QString>
#include <QtWidgets/QDialog>

namespace Ui
{
class FeedbackClass;
}

/// Tells where feedback goes, and which text about the program to send with it. Modal.
class FeedbackDialog : public QDialog
{
    Q_OBJECT

public:
    FeedbackDialog(const QString& strVersionText, QWidget* pParent);
    ~FeedbackDialog() override;

public slots:
    /// Sets all texts anew. @param i32Language  English is the only one there is, whatever is asked for
    void translateUI(int32_t i32Language);

private slots:
    void launchLink(const QString& strLink);

private:
    std::unique_ptr<Ui::FeedbackClass> m_pForm;
};
