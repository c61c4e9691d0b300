#include "Common/PlistDocument.h"

#include <algorithm>

#include <tinyxml2.h>

#include "Common/Fnv1.h"

using tinyxml2::XMLElement;

namespace
{

constexpr const char* k_astrTypeNames[] = {"string", "integer", "real", "true", "false", "array", "dict", "data"};

constexpr uint32_t k_ui32Key = fnv1("key");
constexpr uint32_t k_ui32Array = fnv1("array");
constexpr uint32_t k_ui32Dict = fnv1("dict");

constexpr const char* k_strDeclaration = "xml version=\"1.0\" encoding=\"UTF-8\"";
constexpr const char* k_strDocType = "DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" "
                                     "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"";

/// Writes a carriage return as a reference, as a parser takes the character itself for the end of a line.
class CPlistPrinter : public tinyxml2::XMLPrinter
{
public:
    explicit CPlistPrinter(std::FILE* pFile) : XMLPrinter(pFile) {}

protected:
    using XMLPrinter::Write;
    void Write(const char* pcText, size_t uiSize) override
    {
        for (std::string_view text(pcText, uiSize); !text.empty();)
        {
            const size_t uiPlain = std::min(text.find('\r'), text.size());
            XMLPrinter::Write(text.data(), uiPlain);
            const bool bReturn = uiPlain < text.size();
            if (bReturn)
                XMLPrinter::Write("&#13;", 5);
            text.remove_prefix(uiPlain + (bReturn ? 1 : 0));
        }
    }
};

uint32_t hashName(const XMLElement& element)
{
    return fnv1(element.Name());
}

bool isNamed(const XMLElement& element, EPlistType eType)
{
    return getPlistTypeName(eType) == std::string_view(element.Name());
}

std::string_view textOf(const XMLElement& element)
{
    const char* pText = element.GetText();
    return pText != nullptr ? pText : "";
}

bool holds(const XMLElement& element, const PlistScalar& value)
{
    return isNamed(element, value.eType) && element.FirstChildElement() == nullptr && textOf(element) == value.strText;
}

/// An element of another type loses all that was in it, as that means nothing in the new one.
void fill(XMLElement& element, EPlistType eType, const std::string& strText)
{
    element.DeleteChildren();
    element.SetName(getPlistTypeName(eType));
    if (!strText.empty())
        element.SetText(strText.c_str());
}

/// The value element behind the first key of that name.
XMLElement* findEntry(XMLElement& dict, std::string_view strName)
{
    for (XMLElement* pKey = dict.FirstChildElement(); pKey != nullptr;)
    {
        XMLElement* pValue = pKey->NextSiblingElement();
        if (pValue == nullptr || textOf(*pKey) == strName)
            return pValue;
        pKey = pValue->NextSiblingElement();
    }
    return nullptr;
}

XMLElement& addEntry(XMLElement& dict, std::string_view strName)
{
    dict.InsertNewChildElement("key")->SetText(std::string(strName).c_str());
    return *dict.InsertNewChildElement(getPlistTypeName(ePlistDict));
}

bool checkValue(const XMLElement& value, std::string& strError);

bool checkArray(const XMLElement& array, std::string& strError)
{
    for (const XMLElement* pValue = array.FirstChildElement(); pValue != nullptr; pValue = pValue->NextSiblingElement())
    {
        if (hashName(*pValue) == k_ui32Key)
        {
            strError = "ERROR: Array elements cannot contain a <key> tag!\n";
            return false;
        }
        if (!checkValue(*pValue, strError))
            return false;
    }
    return true;
}

bool checkDict(const XMLElement& dict, std::string& strError)
{
    for (const XMLElement* pKey = dict.FirstChildElement(); pKey != nullptr;)
    {
        const XMLElement* pValue = pKey->NextSiblingElement();
        if (hashName(*pKey) != k_ui32Key)
            strError = "ERROR: Missing <key> tag\n";
        else if (pValue == nullptr)
            strError = "ERROR: Key missing value!";
        else if (hashName(*pValue) == k_ui32Key)
            strError = "ERROR: Key missing value\n";
        else if (checkValue(*pValue, strError))
        {
            pKey = pValue->NextSiblingElement();
            continue;
        }
        return false;
    }
    return true;
}

/// Goes no deeper than the parser, which refuses documents of 100 levels.
bool checkValue(const XMLElement& value, std::string& strError)
{
    const uint32_t ui32Name = hashName(value);
    if (ui32Name == k_ui32Dict)
        return checkDict(value, strError);
    return ui32Name != k_ui32Array || checkArray(value, strError);
}

} // namespace

const char* getPlistTypeName(EPlistType eType)
{
    return k_astrTypeNames[eType];
}

std::vector<std::string_view> splitKeyPath(std::string_view strKey)
{
    std::vector<std::string_view> names;
    for (size_t uiStart = 0; uiStart < strKey.size();)
    {
        const size_t uiEnd = std::min(strKey.find('/', uiStart), strKey.size());
        if (uiEnd != uiStart)
            names.push_back(strKey.substr(uiStart, uiEnd - uiStart));
        uiStart = uiEnd + 1;
    }
    return names;
}

PlistDocument::PlistDocument() : m_pDocument(std::make_unique<tinyxml2::XMLDocument>())
{
}

PlistDocument::~PlistDocument() = default;

const std::string& PlistDocument::getTemplate()
{
    static const std::string strTemplate =
        std::string("<?") + k_strDeclaration + "?>\n<!" + k_strDocType + ">\n<plist version=\"1.0\">\n<dict>\n</dict>\n</plist>\n";
    return strTemplate;
}

bool PlistDocument::parse(const char* pcText, size_t uiSize, std::string& strError)
{
    strError.clear();
    std::string strParseError = "too large";
    bool bParsed = false;
    if (uiSize <= k_uiMostBytes)
    {
        bParsed = m_pDocument->Parse(pcText, uiSize) == tinyxml2::XML_SUCCESS;
        strParseError = bParsed ? "" : m_pDocument->ErrorStr();
    }
    if (!bParsed)
        m_pDocument->Clear();
    tidy();
    if (validate(strError))
        return true;
    if (!bParsed)
        strError += strParseError;
    return false;
}

/// Leaves one element and the comments round it, below the right first lines: a parser takes more than that, but not always again
/// what was written of it.
void PlistDocument::tidy()
{
    const tinyxml2::XMLNode* pRoot = m_pDocument->FirstChildElement();
    for (tinyxml2::XMLNode* pNode = m_pDocument->FirstChild(); pNode != nullptr;)
    {
        tinyxml2::XMLNode* pNext = pNode->NextSibling();
        if (pNode != pRoot && pNode->ToComment() == nullptr)
            m_pDocument->DeleteChild(pNode);
        pNode = pNext;
    }
    m_pDocument->InsertFirstChild(m_pDocument->NewUnknown(k_strDocType));
    m_pDocument->InsertFirstChild(m_pDocument->NewDeclaration(k_strDeclaration));
}

bool PlistDocument::validate(std::string& strError)
{
    XMLElement* pPlist = m_pDocument->FirstChildElement();
    if (pPlist == nullptr)
    {
        pPlist = m_pDocument->NewElement("plist");
        if (pPlist == nullptr || m_pDocument->InsertEndChild(pPlist) == nullptr)
        {
            strError = "ERROR: Failed to recreate <plist> tag. Out of memory!\n";
            return false;
        }
        pPlist->SetAttribute("version", "1.0");
    }
    // A dictionary that was once added behind another element is found again, and not covered by a further one.
    if (getRoot() == nullptr && pPlist->InsertNewChildElement(getPlistTypeName(ePlistDict)) == nullptr)
    {
        strError = "ERROR: Failed to recreate <dict> tag. Out of memory!\n";
        return false;
    }
    return checkDict(*getRoot(), strError);
}

XMLElement* PlistDocument::getRoot() const
{
    XMLElement* pPlist = m_pDocument->FirstChildElement();
    return pPlist != nullptr ? pPlist->FirstChildElement(getPlistTypeName(ePlistDict)) : nullptr;
}

void PlistDocument::write(std::FILE* pFile) const
{
    CPlistPrinter printer(pFile);
    m_pDocument->Print(&printer);
}

const XMLElement* PlistDocument::find(const std::vector<std::string_view>& names) const
{
    XMLElement* pElement = getRoot();
    for (const std::string_view& strName : names)
    {
        if (pElement == nullptr || !isNamed(*pElement, ePlistDict))
            return nullptr;
        pElement = findEntry(*pElement, strName);
    }
    return pElement;
}

XMLElement& PlistDocument::findOrMake(const std::vector<std::string_view>& names)
{
    XMLElement* pElement = getRoot();
    for (const std::string_view& strName : names)
    {
        if (!isNamed(*pElement, ePlistDict))
            fill(*pElement, ePlistDict, {});
        XMLElement* pValue = findEntry(*pElement, strName);
        pElement = pValue != nullptr ? pValue : &addEntry(*pElement, strName);
    }
    return *pElement;
}

bool PlistDocument::set(const std::vector<std::string_view>& names, const PlistScalar& value)
{
    const XMLElement* pEarlier = find(names);
    if (pEarlier != nullptr && holds(*pEarlier, value))
        return false;
    fill(findOrMake(names), value.eType, value.strText);
    return true;
}

bool PlistDocument::setArray(const std::vector<std::string_view>& names, const std::vector<PlistScalar>& values)
{
    const XMLElement* pEarlier = find(names);
    if (pEarlier != nullptr && isNamed(*pEarlier, ePlistArray))
    {
        const XMLElement* pChild = pEarlier->FirstChildElement();
        auto value = values.begin();
        for (; pChild != nullptr && value != values.end() && holds(*pChild, *value); ++value)
            pChild = pChild->NextSiblingElement();
        if (pChild == nullptr && value == values.end())
            return false;
    }
    XMLElement& array = findOrMake(names);
    fill(array, ePlistArray, {});
    for (const PlistScalar& value : values)
        fill(*array.InsertNewChildElement(getPlistTypeName(value.eType)), value.eType, value.strText);
    return true;
}
