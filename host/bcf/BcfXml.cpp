#include "bcf/BcfXml.h"

#include "report/ReportHtml.h"

#include <libxml/parser.h>
#include <libxml/xmlwriter.h>

#include <charconv>
#include <cmath>
#include <cstring>

namespace {

const xmlChar* X(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

} // namespace

BcfXmlWriter::BcfXmlWriter() : buffer_(xmlBufferCreate()), writer_(nullptr) {
    if (buffer_)
        writer_ = xmlNewTextWriterMemory(buffer_, 0);
    failed_ = !writer_ || xmlTextWriterSetIndent(writer_, 1) < 0 ||
              xmlTextWriterSetIndentString(writer_, X("  ")) < 0 ||
              xmlTextWriterStartDocument(writer_, "1.0", "UTF-8", nullptr) < 0;
}

BcfXmlWriter::~BcfXmlWriter() {
    if (writer_)
        xmlFreeTextWriter(writer_);
    if (buffer_)
        xmlBufferFree(buffer_);
}

void BcfXmlWriter::Open(const char* name) {
    failed_ = failed_ || xmlTextWriterStartElement(writer_, X(name)) < 0;
}

void BcfXmlWriter::Attribute(const char* name, const std::string& value) {
    failed_ = failed_ || xmlTextWriterWriteAttribute(writer_, X(name), X(value.c_str())) < 0;
}

void BcfXmlWriter::Text(const char* name, const std::string& value) {
    failed_ = failed_ || xmlTextWriterWriteElement(writer_, X(name), X(value.c_str())) < 0;
}

void BcfXmlWriter::Number(const char* name, double value) {
    Text(name, Exact(value));
}

void BcfXmlWriter::Triple(const char* name, const std::array<double, 3>& xyz) {
    Open(name);
    Number("X", xyz[0]);
    Number("Y", xyz[1]);
    Number("Z", xyz[2]);
    Close();
}

void BcfXmlWriter::Close() {
    failed_ = failed_ || xmlTextWriterEndElement(writer_) < 0;
}

bool BcfXmlWriter::Finish(std::string* bytes) {
    failed_ = failed_ || xmlTextWriterEndDocument(writer_) < 0 || xmlTextWriterFlush(writer_) < 0;
    if (failed_)
        return false;
    bytes->assign(reinterpret_cast<const char*>(xmlBufferContent(buffer_)),
                  static_cast<std::size_t>(xmlBufferLength(buffer_)));
    return true;
}

std::unique_ptr<BcfXmlDocument> BcfXmlDocument::Parse(const std::string& bytes,
                                                      std::string* error) {
    xmlParserCtxtPtr context = xmlNewParserCtxt();
    if (!context) {
        *error = "out of memory";
        return nullptr;
    }
    xmlDocPtr document =
        xmlCtxtReadMemory(context, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    if (!document) {
        const xmlError* why = xmlCtxtGetLastError(context);
        *error = why && why->message ? why->message : "not well-formed XML";
        while (!error->empty() && error->back() == '\n')
            error->pop_back();
        if (why && why->line > 0)
            *error = "line " + std::to_string(why->line) + ": " + *error;
    }
    xmlFreeParserCtxt(context);
    if (!document)
        return nullptr;
    if (!xmlDocGetRootElement(document)) {
        xmlFreeDoc(document);
        *error = "no root element";
        return nullptr;
    }
    return std::unique_ptr<BcfXmlDocument>(new BcfXmlDocument(document));
}

BcfXmlDocument::~BcfXmlDocument() {
    xmlFreeDoc(document_);
}

BcfXmlNode BcfXmlDocument::Root() const {
    return xmlDocGetRootElement(document_);
}

bool BcfXmlIs(BcfXmlNode node, const char* name) {
    return node && node->type == XML_ELEMENT_NODE &&
           std::strcmp(reinterpret_cast<const char*>(node->name), name) == 0;
}

BcfXmlNode BcfXmlChild(BcfXmlNode node, const char* name) {
    for (BcfXmlNode child = node ? node->children : nullptr; child; child = child->next)
        if (BcfXmlIs(child, name))
            return child;
    return nullptr;
}

std::vector<BcfXmlNode> BcfXmlChildren(BcfXmlNode node, const char* name) {
    std::vector<BcfXmlNode> found;
    for (BcfXmlNode child = node ? node->children : nullptr; child; child = child->next)
        if (BcfXmlIs(child, name))
            found.push_back(child);
    return found;
}

std::string BcfXmlText(BcfXmlNode node) {
    if (!node)
        return {};
    xmlChar* text = xmlNodeGetContent(node);
    std::string out = text ? reinterpret_cast<const char*>(text) : "";
    xmlFree(text);
    return out;
}

std::string BcfXmlChildText(BcfXmlNode node, const char* name) {
    return BcfXmlText(BcfXmlChild(node, name));
}

std::string BcfXmlAttribute(BcfXmlNode node, const char* name) {
    if (!node)
        return {};
    xmlChar* value = xmlGetProp(node, X(name));
    std::string out = value ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return out;
}

bool BcfXmlNumber(BcfXmlNode node, double* value) {
    std::string text = BcfXmlText(node);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (!node || first == std::string::npos)
        return false;
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    text = text.substr(first, last - first + 1);
    if (text.front() == '+')
        text.erase(0, 1);
    double parsed = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(parsed))
        return false;
    *value = parsed;
    return true;
}
