#include "Common/AboutBoxDialog.h"

#include <cstdint>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QBrush>
#include <QtGui/QDesktopServices>
#include <QtGui/QFont>
#include <QtGui/QFontInfo>
#include <QtGui/QImage>
#include <QtGui/QPalette>

#include "Common/Preferences.h"
#include "Common/ProductLinks.h"
#include "ui_AboutBoxDialog.h"

namespace
{

constexpr char k_acSdkBuild[] = " (SDK build 19.2@5581729)";
constexpr double k_dNameSize = 1.25; ///< of the other texts

/// @return the smallest size that holds both and has the image's aspect ratio
QSize getPictureSize(const QSize& needed, const QSize& image)
{
    const QSize least = needed.expandedTo(image);
    const int64_t i64Across = static_cast<int64_t>(least.width()) * image.height();
    const int64_t i64Down = static_cast<int64_t>(least.height()) * image.width();
    const auto divideUp = [](int64_t i64Value, int iBy) { return static_cast<int>((i64Value + iBy - 1) / iBy); };
    if (i64Across < i64Down)
        return {divideUp(i64Down, image.height()), least.height()};
    return {least.width(), divideUp(i64Across, image.width())};
}

/// @return the path of the picture for displays of more than one pixel a point, where it is wanted and there is one
QString findPicture(const QString& strImage, qreal dPixelRatio)
{
    const QFileInfo info(strImage);
    const QString strFine = info.path() + '/' + info.completeBaseName() + "@2x." + info.suffix();
    return dPixelRatio > 1.0 && QFile::exists(strFine) ? strFine : strImage;
}

} // namespace

AboutBoxDialog::AboutBoxDialog(const QString& strNameAndVersion, const QString& strImage, Preferences* pPreferences, const QString& strUses,
                               QWidget* pParent)
    : QDialog(pParent),
      m_pForm(std::make_unique<Ui::AboutBoxClass>()),
      m_pPreferences(pPreferences),
      m_strKey(QCoreApplication::applicationName().toStdString() + "/About/ShowSplash")
{
    m_pForm->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_pForm->ShowAtStartUpCB->setChecked(getShowAtStartUp());
    m_pForm->AppVersionLabel->setText(strNameAndVersion + k_acSdkBuild);
    m_pForm->UsesLabel->setText(strUses + " | Qt version " + qVersion());
    const QImage image(findPicture(strImage, devicePixelRatioF()));
    const QString strLinkColour = image.isNull() ? QString() : QString("white");
    m_pForm->EmailLabel->setText(getLinkMarkup(k_SupportLink, strLinkColour));
    m_pForm->WebsiteLabel->setText(getLinkMarkup(k_WebsiteLink, strLinkColour));
    QFont nameFont = m_pForm->AppVersionLabel->font();
    nameFont.setPointSizeF(QFontInfo(nameFont).pointSizeF() * k_dNameSize);
    m_pForm->AppVersionLabel->setFont(nameFont);
    adjustSize();
    if (!image.isNull())
        setBackground(image);

    connect(m_pForm->ShowAtStartUpCB, &QCheckBox::stateChanged, this, &AboutBoxDialog::onCheckBoxStateChanged);
    connect(m_pForm->EmailLabel, &QLabel::linkActivated, this, &AboutBoxDialog::launchLink);
    connect(m_pForm->WebsiteLabel, &QLabel::linkActivated, this, &AboutBoxDialog::launchLink);
}

AboutBoxDialog::~AboutBoxDialog() = default;

void AboutBoxDialog::showCentred()
{
    moveToCentre();
    show();
}

bool AboutBoxDialog::getShowAtStartUp() const
{
    bool bShow = true;
    if (m_pPreferences != nullptr)
        m_pPreferences->getBool(m_strKey, bShow);
    return bShow;
}

/// The picture becomes the window's ground, scaled to its size, and all text on it white.
void AboutBoxDialog::setBackground(const QImage& image)
{
    setFixedSize(getPictureSize(size(), (QSizeF(image.size()) / image.devicePixelRatioF()).toSize()));
    QImage scaled = image.scaled(size() * devicePixelRatioF(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(devicePixelRatioF());

    QPalette colours = palette();
    colours.setBrush(QPalette::Window, QBrush(scaled));
    colours.setColor(QPalette::WindowText, Qt::white);
    setPalette(colours);
}

void AboutBoxDialog::moveToCentre()
{
    if (const QWidget* pParent = parentWidget())
        move(pParent->window()->frameGeometry().topLeft() + pParent->window()->rect().center() - rect().center());
}

void AboutBoxDialog::showEvent(QShowEvent* pEvent)
{
    QDialog::showEvent(pEvent);
    QCoreApplication::instance()->installEventFilter(this);
}

void AboutBoxDialog::hideEvent(QHideEvent* pEvent)
{
    QCoreApplication::instance()->removeEventFilter(this);
    QDialog::hideEvent(pEvent);
}

bool AboutBoxDialog::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (parentWidget() != nullptr && pWatched->isWidgetType())
    {
        const QWidget* pParentWindow = parentWidget()->window();
        const QEvent::Type eType = pEvent->type();
        if (eType == QEvent::MouseButtonPress && static_cast<QWidget*>(pWatched)->window() == pParentWindow)
            hide();
        else if ((eType == QEvent::Move || eType == QEvent::Resize) && pWatched == pParentWindow)
            moveToCentre();
    }
    return QDialog::eventFilter(pWatched, pEvent);
}

void AboutBoxDialog::onCheckBoxStateChanged(int iState)
{
    if (m_pPreferences == nullptr)
        return;
    m_pPreferences->setBool(m_strKey, iState == Qt::Checked);
    m_pPreferences->save();
}

void AboutBoxDialog::launchLink(const QString& strLink)
{
    QDesktopServices::openUrl(QUrl(strLink));
}
