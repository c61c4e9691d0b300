#include "MainWindow/DroppedFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>

#include "Common/LastPathComponent.h"

namespace
{

// A count of 4 bytes, then the first record: 72 bytes of flags, sizes and times, and its field for the name.
constexpr int k_iNameOffset = 76;
constexpr int k_iNameLength = 260;

/// The system's folder is only taken where the process has none of its own.
QString getTemporaryFolder()
{
    const QString strOwn = QFile::decodeName(qgetenv("TEMP"));
    return strOwn.isEmpty() ? QDir::tempPath() : strOwn;
}

} // namespace

bool hasVirtualFile(const QMimeData& data)
{
    return data.hasFormat(QLatin1String(k_acFileDescriptorFormat)) && data.hasFormat(QLatin1String(k_acFileContentsFormat));
}

QString getDescriptorFileName(const QByteArray& descriptor)
{
    QByteArray name = descriptor.mid(k_iNameOffset, k_iNameLength);
    const int iEnd = name.indexOf('\0');
    if (iEnd >= 0)
        name.truncate(iEnd);
    const QString strName = getLastPathComponent(QString::fromLatin1(name));
    return strName == "." || strName == ".." ? QString() : strName;
}

QString storeDroppedFile(const QString& strName, const QByteArray& contents)
{
    const QString strParent = getTemporaryFolder() + "/Halvane";
    if (strName.isEmpty() || !QDir().mkpath(strParent))
        return {};
    QTemporaryDir folder(strParent + "/XXXXXX");
    folder.setAutoRemove(false);
    if (!folder.isValid())
        return {};
    const QString strPath = folder.path() + '/' + strName;
    QFile file(strPath);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        return {};
    file.close();
    return file.error() == QFileDevice::NoError ? strPath : QString();
}
