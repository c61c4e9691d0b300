#include "Common/Preferences.h"

#include <cstdio>
#include <locale>
#include <sstream>
#include <type_traits>
#include <utility>

#include <QtCore/QByteArray>
#include <tinyxml2.h>

#include "Common/Fnv1.h"
#include "Common/MOXPreferencesLinux.h"
#include "Common/PlistDocument.h"
#include "Core/FileHandle.h"

using tinyxml2::XMLElement;

struct Preferences::Shared
{
    /// @param bReload  the document stays where the file cannot be read
    bool load(std::string& strError, bool bReload);
    bool read(std::vector<uint8_t>& bytes, uint32_t& ui32FileTime, std::string& strError);
    bool save(bool bForce);
    EResult prepare(const std::string& strKey, std::vector<std::string_view>& names);

    /// @param read  takes the element and gives false for one that it cannot read
    template <typename Read>
    EResult get(const std::string& strKey, Read read);
    /// @param set  takes document and names and gives false where it changed nothing
    template <typename Set>
    EResult set(const std::string& strKey, Set set);

    template <typename Value>
    EResult getScalar(const std::string& strKey, Value& value);
    template <typename Value>
    EResult getScalar(const std::string& strKey, Value& value, const Value& defaultValue);
    template <typename Value>
    EResult getArray(const std::string& strKey, std::vector<Value>& values);
    EResult setValue(const std::string& strKey, const PlistScalar& value);
    template <typename Value>
    EResult setScalar(const std::string& strKey, const Value& value);
    template <typename Value>
    EResult setArray(const std::string& strKey, const std::vector<Value>& values);

    std::unique_ptr<PlistDocument> pDocument; ///< null where nothing is loaded
    std::unique_ptr<MOXPreferencesImpl> pImpl;
    std::string strName;
    uint32_t ui32Time = 0; ///< of the file when it was last read or written
    bool m_bReloadWatch = false;
    bool m_bDirty = false;
    uint32_t ui32Domain = 0;
};

namespace
{

constexpr uint32_t k_ui32True = fnv1("true");
constexpr uint32_t k_ui32False = fnv1("false");

// How each type of value stands in an element. Streams keep to the classic locale, in which a file reads alike for every user.

std::string_view textOf(const XMLElement& element)
{
    const char* pText = element.GetText();
    return pText != nullptr ? pText : "";
}

template <typename Number>
bool readText(std::string_view text, Number& value)
{
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    stream >> std::boolalpha >> value;
    return !stream.fail();
}

template <typename Number>
std::string writeText(Number value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

bool isNamed(const XMLElement& element, EPlistType eType)
{
    return getPlistTypeName(eType) == std::string_view(element.Name());
}

/// Reading the content of an element; whether its name is right is another matter, but for a boolean.
template <typename Value>
struct ValueKind
{
    static bool read(const XMLElement& element, Value& value) { return readText(textOf(element), value); }
    static PlistScalar write(Value value) { return {k_eType, writeText(value)}; }
    static bool isRightName(const XMLElement& element) { return isNamed(element, k_eType); }

    static constexpr EPlistType k_eType = std::is_integral_v<Value> ? ePlistInteger : ePlistReal;
};

template <>
struct ValueKind<std::string>
{
    static bool read(const XMLElement& element, std::string& strValue)
    {
        strValue = textOf(element);
        return true;
    }
    static PlistScalar write(const std::string& strValue) { return {ePlistString, strValue}; }
    static bool isRightName(const XMLElement& element) { return isNamed(element, ePlistString); }
};

template <>
struct ValueKind<bool>
{
    static bool read(const XMLElement& element, bool& bValue) { return isRightName(element) && readText(element.Name(), bValue); }
    static PlistScalar write(bool bValue) { return {bValue ? ePlistTrue : ePlistFalse, {}}; }
    static bool isRightName(const XMLElement& element)
    {
        const uint32_t ui32Name = fnv1(element.Name());
        return ui32Name == k_ui32True || ui32Name == k_ui32False;
    }
};

template <typename Value>
bool readScalar(const XMLElement& element, Value& value)
{
    Value read{};
    if (!ValueKind<Value>::isRightName(element) || !ValueKind<Value>::read(element, read))
        return false;
    value = std::move(read);
    return true;
}

/// On purpose: the array's own name counts in any case of letters, and those of the elements in it do not count.
template <typename Value>
bool readArray(const XMLElement& element, std::vector<Value>& values)
{
    if (qstricmp(element.Name(), getPlistTypeName(ePlistArray)) != 0)
        return false;
    std::vector<Value> read;
    for (const XMLElement* pChild = element.FirstChildElement(); pChild != nullptr; pChild = pChild->NextSiblingElement())
    {
        Value value{};
        if (!ValueKind<Value>::read(*pChild, value))
            return false;
        read.push_back(std::move(value));
    }
    values = std::move(read);
    return true;
}

bool readData(const XMLElement& element, std::vector<uint8_t>& bytes)
{
    if (!isNamed(element, ePlistData))
        return false;
    // What is not of base64's alphabet is passed over.
    const std::string_view text = textOf(element);
    const QByteArray decoded = QByteArray::fromBase64(QByteArray::fromRawData(text.data(), static_cast<int>(text.size())));
    bytes.assign(decoded.begin(), decoded.end());
    return true;
}

template <typename Value>
std::vector<PlistScalar> writeAll(const std::vector<Value>& values)
{
    std::vector<PlistScalar> written;
    written.reserve(values.size());
    for (const Value& value : values)
        written.push_back(ValueKind<Value>::write(value));
    return written;
}

} // namespace

// The file

bool Preferences::Shared::load(std::string& strError, bool bReload)
{
    strError.clear();
    if (!pImpl)
        return false;
    if (!bReload)
    {
        pDocument.reset();
        m_bDirty = false;
    }

    // A file that was not read is tried again at the next access: nothing is written over settings that were never seen.
    std::vector<uint8_t> bytes;
    if (!read(bytes, ui32Time, strError))
    {
        strError = "ERROR: " + strError;
        return false;
    }
    // One whose list is refused is tried again once it has changed.
    pDocument.reset();
    auto pNew = std::make_unique<PlistDocument>();
    if (!pNew->parse(reinterpret_cast<const char*>(bytes.data()), bytes.size(), strError))
        return false;
    pDocument = std::move(pNew);
    return true;
}

/// All bytes of the file, and its time.
/// @return false, with both as they were, if it cannot be read, or is larger than settings are
bool Preferences::Shared::read(std::vector<uint8_t>& bytes, uint32_t& ui32FileTime, std::string& strError)
{
    const std::unique_ptr<MOXPreferencesFile> pFile = pImpl->openFile(strName, false, ui32Domain, false, strError);
    if (!pFile || pFile->pFile == nullptr)
        return false;
    uint64_t ui64Size = 0;
    std::vector<uint8_t> whole;
    const bool bRead = moxtexture::getFileSize(pFile->pFile, ui64Size) && ui64Size <= PlistDocument::k_uiMostBytes &&
                       moxtexture::readWholeFile(pFile->pFile, whole);
    const uint32_t ui32Opened = pFile->ui32Time;
    if (!pImpl->closeFile(*pFile, false) || !bRead)
    {
        strError = "Failed to open preference file.";
        return false;
    }
    bytes = std::move(whole);
    ui32FileTime = ui32Opened;
    return true;
}

bool Preferences::Shared::save(bool bForce)
{
    if (!pDocument || !pImpl)
        return false;
    if (!bForce && !m_bDirty)
        return true;
    std::string strError;
    const std::unique_ptr<MOXPreferencesFile> pFile = pImpl->openFile(strName, true, ui32Domain, true, strError);
    if (!pFile || pFile->pFile == nullptr)
        return false;
    pDocument->write(pFile->pFile);
    const bool bLoadable = static_cast<uint64_t>(std::ftell(pFile->pFile)) <= PlistDocument::k_uiMostBytes;
    if (!bLoadable || !pImpl->closeFile(*pFile, true))
        return false;
    m_bDirty = false;
    ui32Time = pFile->ui32Time;
    return true;
}

/// What comes before every access.
Preferences::EResult Preferences::Shared::prepare(const std::string& strKey, std::vector<std::string_view>& names)
{
    uint32_t ui32Now = 0;
    std::string strError;
    const bool bChanged =
        !m_bDirty && m_bReloadWatch && pImpl && pImpl->getModificationTime(strName, ui32Domain, ui32Now) && ui32Now != ui32Time;
    if (bChanged && !load(strError, true))
        return eNoDocument;
    if (!pDocument)
        return eNoDocument;
    names = splitKeyPath(strKey);
    if (names.empty())
        return eEmptyKey;
    return names.size() <= PlistDocument::k_uiMostNames ? eDone : eKeyNotFound;
}

template <typename Read>
Preferences::EResult Preferences::Shared::get(const std::string& strKey, Read read)
{
    std::vector<std::string_view> names;
    const EResult eResult = prepare(strKey, names);
    if (eResult != eDone)
        return eResult;
    const XMLElement* pElement = pDocument->find(names);
    if (pElement == nullptr)
        return eKeyNotFound;
    return read(*pElement) ? eDone : eTypeMismatch;
}

template <typename Set>
Preferences::EResult Preferences::Shared::set(const std::string& strKey, Set set)
{
    std::vector<std::string_view> names;
    const EResult eResult = prepare(strKey, names);
    if (eResult == eDone && set(*pDocument, names))
        m_bDirty = true;
    return eResult;
}

template <typename Value>
Preferences::EResult Preferences::Shared::getScalar(const std::string& strKey, Value& value)
{
    return get(strKey, [&](const XMLElement& element) { return readScalar(element, value); });
}

template <typename Value>
Preferences::EResult Preferences::Shared::getScalar(const std::string& strKey, Value& value, const Value& defaultValue)
{
    const EResult eResult = getScalar(strKey, value);
    if (eResult != eDone)
        value = defaultValue;
    return eResult;
}

template <typename Value>
Preferences::EResult Preferences::Shared::getArray(const std::string& strKey, std::vector<Value>& values)
{
    return get(strKey, [&](const XMLElement& element) { return readArray(element, values); });
}

Preferences::EResult Preferences::Shared::setValue(const std::string& strKey, const PlistScalar& value)
{
    return set(strKey, [&](PlistDocument& document, const auto& names) { return document.set(names, value); });
}

template <typename Value>
Preferences::EResult Preferences::Shared::setScalar(const std::string& strKey, const Value& value)
{
    return setValue(strKey, ValueKind<Value>::write(value));
}

template <typename Value>
Preferences::EResult Preferences::Shared::setArray(const std::string& strKey, const std::vector<Value>& values)
{
    return set(strKey, [&](PlistDocument& document, const auto& names) { return document.setArray(names, writeAll(values)); });
}

Preferences::Preferences(const std::string& strApplicationName, uint32_t ui32Domain)
    : Preferences(strApplicationName, ui32Domain, std::make_unique<MOXPreferencesLinux>())
{
}

Preferences::Preferences(const std::string& strApplicationName, uint32_t ui32Domain, std::unique_ptr<MOXPreferencesImpl> pImpl)
    : m_pShared(std::make_shared<Shared>())
{
    m_pShared->pImpl = std::move(pImpl);
    m_pShared->strName = strApplicationName;
    m_pShared->ui32Domain = ui32Domain;
}

bool Preferences::load(std::string& strError, bool bWatch)
{
    m_pShared->m_bReloadWatch = bWatch;
    return m_pShared->load(strError, false);
}

bool Preferences::save(bool bForce)
{
    return m_pShared->save(bForce);
}

// Single values

Preferences::EResult Preferences::getText(const std::string& strKey, std::string& strValue) const
{
    return m_pShared->getScalar(strKey, strValue);
}

Preferences::EResult Preferences::getText(const std::string& strKey, std::string& strValue, const std::string& strDefault) const
{
    return m_pShared->getScalar(strKey, strValue, strDefault);
}

Preferences::EResult Preferences::setText(const std::string& strKey, const std::string& strValue)
{
    return m_pShared->setScalar(strKey, strValue);
}

Preferences::EResult Preferences::getInt(const std::string& strKey, int32_t& i32Value) const
{
    return m_pShared->getScalar(strKey, i32Value);
}

Preferences::EResult Preferences::getInt(const std::string& strKey, int32_t& i32Value, int32_t i32Default) const
{
    return m_pShared->getScalar(strKey, i32Value, i32Default);
}

Preferences::EResult Preferences::setInt(const std::string& strKey, int32_t i32Value)
{
    return m_pShared->setScalar(strKey, i32Value);
}

Preferences::EResult Preferences::getUint(const std::string& strKey, uint32_t& ui32Value) const
{
    return m_pShared->getScalar(strKey, ui32Value);
}

Preferences::EResult Preferences::getUint(const std::string& strKey, uint32_t& ui32Value, uint32_t ui32Default) const
{
    return m_pShared->getScalar(strKey, ui32Value, ui32Default);
}

Preferences::EResult Preferences::setUint(const std::string& strKey, uint32_t ui32Value)
{
    return m_pShared->setScalar(strKey, ui32Value);
}

Preferences::EResult Preferences::getReal(const std::string& strKey, double& dValue) const
{
    return m_pShared->getScalar(strKey, dValue);
}

Preferences::EResult Preferences::getReal(const std::string& strKey, double& dValue, double dDefault) const
{
    return m_pShared->getScalar(strKey, dValue, dDefault);
}

Preferences::EResult Preferences::setReal(const std::string& strKey, double dValue)
{
    return m_pShared->setScalar(strKey, dValue);
}

Preferences::EResult Preferences::getBool(const std::string& strKey, bool& bValue) const
{
    return m_pShared->getScalar(strKey, bValue);
}

Preferences::EResult Preferences::getBool(const std::string& strKey, bool& bValue, bool bDefault) const
{
    return m_pShared->getScalar(strKey, bValue, bDefault);
}

Preferences::EResult Preferences::setBool(const std::string& strKey, bool bValue)
{
    return m_pShared->setScalar(strKey, bValue);
}

// Bytes

Preferences::EResult Preferences::getData(const std::string& strKey, std::vector<uint8_t>& bytes) const
{
    return m_pShared->get(strKey, [&](const XMLElement& element) { return readData(element, bytes); });
}

Preferences::EResult Preferences::setData(const std::string& strKey, const uint8_t* pui8Bytes, size_t uiSize)
{
    if (uiSize > PlistDocument::k_uiMostBytes)
        return eTypeMismatch;
    const QByteArray text = QByteArray::fromRawData(reinterpret_cast<const char*>(pui8Bytes), static_cast<int>(uiSize)).toBase64();
    return m_pShared->setValue(strKey, {ePlistData, text.toStdString()});
}

// Lists of values

Preferences::EResult Preferences::getTextArray(const std::string& strKey, std::vector<std::string>& values) const
{
    return m_pShared->getArray(strKey, values);
}

Preferences::EResult Preferences::setTextArray(const std::string& strKey, const std::vector<std::string>& values)
{
    return m_pShared->setArray(strKey, values);
}

Preferences::EResult Preferences::getIntArray(const std::string& strKey, std::vector<int32_t>& values) const
{
    return m_pShared->getArray(strKey, values);
}

Preferences::EResult Preferences::setIntArray(const std::string& strKey, const std::vector<int32_t>& values)
{
    return m_pShared->setArray(strKey, values);
}

Preferences::EResult Preferences::getUintArray(const std::string& strKey, std::vector<uint32_t>& values) const
{
    return m_pShared->getArray(strKey, values);
}

Preferences::EResult Preferences::setUintArray(const std::string& strKey, const std::vector<uint32_t>& values)
{
    return m_pShared->setArray(strKey, values);
}

Preferences::EResult Preferences::getRealArray(const std::string& strKey, std::vector<double>& values) const
{
    return m_pShared->getArray(strKey, values);
}

Preferences::EResult Preferences::setRealArray(const std::string& strKey, const std::vector<double>& values)
{
    return m_pShared->setArray(strKey, values);
}

Preferences::EResult Preferences::getBoolArray(const std::string& strKey, std::vector<bool>& values) const
{
    return m_pShared->getArray(strKey, values);
}

Preferences::EResult Preferences::setBoolArray(const std::string& strKey, const std::vector<bool>& values)
{
    return m_pShared->setArray(strKey, values);
}
