#include "Common/FeedbackDialog.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include "Common/ProductLinks.h"
#include "ui_FeedbackDialog.h"

FeedbackDialog::FeedbackDialog(const QString& strVersionText, QWidget* pParent)
    : QDialog(pParent), m_pForm(std::make_unique<Ui::FeedbackClass>())
{
    m_pForm->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_pForm->RequiredText->setPlainText(strVersionText);
    m_pForm->RequiredText->setFocus();
    m_pForm->ForumLabel->setText(getLinkMarkup(k_ForumLink));
    m_pForm->SupportLabel->setText(getLinkMarkup(k_SupportLink));
    connect(m_pForm->ForumLabel, &QLabel::linkActivated, this, &FeedbackDialog::launchLink);
    connect(m_pForm->SupportLabel, &QLabel::linkActivated, this, &FeedbackDialog::launchLink);
    resize(sizeHint().width(), minimumSizeHint().height()); // the text is a line, for which the box would offer a page
}

FeedbackDialog::~FeedbackDialog() = default;

void FeedbackDialog::translateUI(int32_t)
{
    m_pForm->retranslateUi(this);
}

void FeedbackDialog::launchLink(const QString& strLink)
{
    QDesktopServices::openUrl(QUrl(strLink));
}
