#pragma once
#include <array>
#include <memory>
#include <string>
#include <vector>

struct _xmlBuffer;
struct _xmlTextWriter;
struct _xmlDoc;
struct _xmlNode;

// One XML document written in memory through libxml2's writer, which escapes what it is
// given: elements are opened and closed in order, numbers are written as the shortest
// text that reads back to the same double.
class BcfXmlWriter {
public:
    BcfXmlWriter();
    ~BcfXmlWriter();
    BcfXmlWriter(const BcfXmlWriter&) = delete;
    BcfXmlWriter& operator=(const BcfXmlWriter&) = delete;

    void Open(const char* name);
    void Attribute(const char* name, const std::string& value);
    void Text(const char* name, const std::string& value);
    void Number(const char* name, double value);
    // An element of three numbers, X, Y and Z.
    void Triple(const char* name, const std::array<double, 3>& xyz);
    void Close();
    // The document's bytes, UTF-8 with its declaration; false if memory ran out.
    bool Finish(std::string* bytes);

private:
    _xmlBuffer* buffer_;
    _xmlTextWriter* writer_;
    bool failed_ = false;
};

using BcfXmlNode = const _xmlNode*;

// A parsed XML document. The parser reaches no network, loads no external entity and
// keeps libxml2's limits on what entities may expand to.
class BcfXmlDocument {
public:
    // Null with libxml2's reason in `error` for bytes that are no well-formed XML.
    static std::unique_ptr<BcfXmlDocument> Parse(const std::string& bytes, std::string* error);
    ~BcfXmlDocument();
    BcfXmlDocument(const BcfXmlDocument&) = delete;
    BcfXmlDocument& operator=(const BcfXmlDocument&) = delete;

    BcfXmlNode Root() const;

private:
    explicit BcfXmlDocument(_xmlDoc* document) : document_(document) {}
    _xmlDoc* document_;
};

// Elements are matched by their local names, whatever namespace a writer put them in.
BcfXmlNode BcfXmlChild(BcfXmlNode node, const char* name);
std::vector<BcfXmlNode> BcfXmlChildren(BcfXmlNode node, const char* name);
bool BcfXmlIs(BcfXmlNode node, const char* name);
// The text of an element, empty for a null node.
std::string BcfXmlText(BcfXmlNode node);
// The text of a child element, empty where there is none.
std::string BcfXmlChildText(BcfXmlNode node, const char* name);
std::string BcfXmlAttribute(BcfXmlNode node, const char* name);
// A number of an element's text; false where it is missing or no finite number.
bool BcfXmlNumber(BcfXmlNode node, double* value);
