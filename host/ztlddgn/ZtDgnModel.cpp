#include "ztlddgn/ZtDgnModel.h"

#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztlddgn/ZtDgnBytes.h"
#include "ztlddgn/ZtDgnLinkage.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztutil/ZtUHugePages.h"
#include "ztutil/ZtUName.h"
#include "ztutil/ZtUResource.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <typeinfo>

namespace {

// An element's range in master units.
ZtLBox3f RangeBox(const ZtDgnElement& element, double uorsPerMaster) {
    const std::int32_t* r = element.range;
    const double f = uorsPerMaster;
    return ZtLBox3f(ZtLPos3f(r[0] / f, r[1] / f, r[2] / f), ZtLPos3f(r[3] / f, r[4] / f, r[5] / f));
}

constexpr const char* kSceneProps = "ZtDgnSceneProps";
constexpr const char* kUorsPerMaster = "ZtDgnUORsPerMaster";
constexpr const char* kDmrsAttribute = "ZtDgnDMRSAttribute";
constexpr const char* kElementCategory = "ZtDgnElement";
constexpr std::uint16_t kAttributesPresent = 0x0800;
constexpr const char* kAttributeCategory = "ZtDgnPDSAttributes";

ZtUData IntData(int value) {
    ZtUData data;
    data.SetInt32(value);
    return data;
}

ZtUData TextData(const std::wstring& text) {
    ZtUData data;
    data.SetWideString(text.c_str());
    return data;
}

// "Level 3", "Colour 7": the resource text, a blank and the number.
std::vector<ZtOaProperty> NumberedTexts(ZtUName* name, const char* key, const wchar_t* fallback,
                                        int count) {
    const std::wstring word = ZtUResource::FindString(key, fallback);
    std::vector<ZtOaProperty> properties;
    properties.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        properties.emplace_back(name, TextData(word + L" " + std::to_wstring(i)));
    return properties;
}

std::vector<ZtOaProperty> Numbers(ZtUName* name, int count) {
    std::vector<ZtOaProperty> properties;
    properties.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        properties.emplace_back(name, IntData(i));
    return properties;
}

std::wstring LastName(const wchar_t* path) {
    const std::wstring text = path ? path : L"";
    const std::size_t slash = text.find_last_of(L"/\\");
    return slash == std::wstring::npos ? text : text.substr(slash + 1);
}

} // namespace

ZtDgnModel::ZtDgnModel(const wchar_t* path, ZtUNameDict* names) : ZtDgnModel(path, UnnamedTag{}) {
    BindNames(names);
}

ZtDgnModel::ZtDgnModel(const wchar_t* path, UnnamedTag)
    : ZtOaPartition(LastName(path).c_str(), path, Ownership::kBorrowsChildren) {
    SetHeader(header_);
}

void ZtDgnModel::BindNames(ZtUNameDict* names) {
    if (!names)
        ownNames_ = std::make_unique<ZtUNameDict>();
    names_ = names ? names : ownNames_.get();
    category_ = names_->Find(L"Element", kElementCategory);
    typeName_ = names_->Find(L"Type", "ZtDgnType");
    graphicGroupName_ = names_->Find(L"Graphic Group", "ZtDgnGraphicGroup");
    weightName_ = names_->Find(L"Weight", "ZtDgnWeight");
    styleName_ = names_->Find(L"Style", "ZtDgnStyle");
    levelProperties_ = NumberedTexts(ZtUName::StandardName(ZtUName::kStandardLevel, names_),
                                     "ztlddgn_level", L"Level", 64);
    colourProperties_ = NumberedTexts(ZtUName::StandardName(ZtUName::kStandardColour, names_),
                                      "ztlddgn_mat_colour", L"Colour", 256);
    typeProperties_ = Numbers(typeName_, 128);
    weightProperties_ = Numbers(weightName_, 32);
    styleProperties_ = Numbers(styleName_, 8);
    sourceFileProperty_ = std::make_unique<ZtOaProperty>(
        ZtUName::StandardName(ZtUName::kStandardSourceFile, names_), TextData(GetName().Str()));
    auto sceneProps =
        std::make_unique<ZtOaPropertyAttribute>(names_->Find(L"DGN Scene", kSceneProps));
    sceneProps->EditPropertyVector().PushBack(
        ZtOaProperty(names_->Find(L"UORs per Master Unit", kUorsPerMaster), ZtUData()));
    sceneProps_ = sceneProps.get();
    AddAttribute(sceneProps.release());
    SetUorsPerMaster(uorsPerMaster_);
}

ZtDgnModel::~ZtDgnModel() = default;

void ZtDgnModel::SetHeader(const ZtDgnModelHeader& header) {
    header_ = header;
    SetUorsPerMaster(static_cast<double>(header.subunitsPerMaster) * header.uorsPerSubunit);
}

void ZtDgnModel::SetUorsPerMaster(double factor) {
    uorsPerMaster_ = factor;
    if (!sceneProps_)
        return;
    ZtUData value;
    value.SetDouble(factor);
    sceneProps_->EditPropertyVector().Edit(0)->SetValue(value);
}

ZtLBox3f ZtDgnModel::GetElementBox(std::size_t slot) const {
    return RangeBox(elements_[slot], uorsPerMaster_);
}

bool ZtDgnModel::HasFlatBoxes() const {
    return allTopLevel_ && static_cast<std::size_t>(GetNumChildren()) == elements_.Size();
}

void ZtDgnModel::FillChildBoxes(std::size_t first, std::size_t count, ZtLBox3f* boxes) const {
    elements_.ForRange(first, count, [&](const ZtDgnElement& element) {
        *boxes++ = RangeBox(element, uorsPerMaster_);
    });
}

std::uint64_t ZtDgnModel::GetDmrs(std::size_t slot) const {
    const ZtDgnElement& element = elements_[slot];
    return ZtDgnFindDmrs(GetLinkageWords(element), element.linkageWords);
}

void ZtDgnModel::ReserveForFile(std::uint64_t fileBytes) {
    // No file holds more top-level elements than headers fit into it. The room is only
    // reserved, and a system maps in no more of it than is used; but a sparse file's size
    // says nothing, so the room stays bounded.
    constexpr std::uint64_t kMostReserved = std::uint64_t{1} << 24;
    const auto count =
        static_cast<std::size_t>(std::min(fileBytes / kZtDgnGraphicHeaderBytes, kMostReserved));
    ReserveChildren(count);
    ZtUAdviseHugePages(const_cast<ZtOaNode**>(GetChildArray()), count * sizeof(ZtOaNode*));
}

ZtOaNode* ZtDgnModel::AddElement(const ZtDgnRawElement& raw, std::uint32_t index, bool group,
                                 ZtDgnGroupNode* parent, bool* linkageOverrun) {
    const unsigned char* p = raw.bytes;
    const unsigned char* area = nullptr;
    std::size_t words = 0;
    if (ZtDgnWord(p + 32) & kAttributesPresent) {
        const std::size_t first = 32 + 2 * std::size_t{ZtDgnWord(p + 30)};
        if (first > raw.size) {
            *linkageOverrun = true;
        } else {
            area = p + first;
            words = ZtDgnMeasureLinkages(area, (raw.size - first) / 2, linkageOverrun);
        }
    }
    // A run may pass over the rest of a chunk: leave room for that in the 32-bit index.
    constexpr std::size_t kMostWords = std::numeric_limits<std::uint32_t>::max();
    if (linkages_.Size() + 2 * 65536 > kMostWords || elements_.Size() >= kMostWords)
        return nullptr;
    std::size_t first = 0;
    if (words) {
        // Most elements have a linkage or two: a loop beats a call.
        std::uint16_t* run = linkages_.AppendRun(words, &first);
        for (std::size_t i = 0; i < words; ++i)
            run[i] = ZtDgnWord(area + 2 * i);
    }

    const auto slot = static_cast<std::uint32_t>(elements_.Size());
    elements_.Emplace(ZtDgnElement{
        raw.offset,
        {ZtDgnRangeValue(p + 4), ZtDgnRangeValue(p + 8), ZtDgnRangeValue(p + 12),
         ZtDgnRangeValue(p + 16), ZtDgnRangeValue(p + 20), ZtDgnRangeValue(p + 24)},
        index,
        static_cast<std::uint32_t>(first),
        static_cast<std::uint16_t>(words),
        ZtDgnWord(p + 28),
        static_cast<std::uint8_t>(p[1] & 0x7F),
        p[0],
        p[35],
        p[34],
    });
    ZtOaNode* node = group ? static_cast<ZtOaNode*>(&groups_.Emplace(this, slot))
                           : static_cast<ZtOaNode*>(&leaves_.Emplace(this, slot));
    if (parent) {
        parent->AddComponent(node);
        allTopLevel_ = false;
    } else {
        AppendChild(node);
    }
    return node;
}

void ZtDgnModel::FinishLoad(std::uint32_t fileElementCount) {
    fileElementCount_ = fileElementCount;
    NoteEdit();
}

const ZtOaProperty& ZtDgnModel::GraphicGroupProperty(std::uint16_t group) const {
    std::unique_ptr<ZtOaProperty>& property = graphicGroups_[group];
    if (!property)
        property = std::make_unique<ZtOaProperty>(graphicGroupName_, IntData(group));
    return *property;
}

void ZtDgnModel::VisitElementProperties(std::uint32_t slot, ZtOaPropertyVisitor& visitor) const {
    const ZtDgnElement& e = elements_[slot];
    visitor.Visit(category_, levelProperties_[static_cast<std::size_t>(e.GetLevel())]);
    visitor.Visit(category_, colourProperties_[e.colour]);
    visitor.Visit(category_, *sourceFileProperty_);
    visitor.Visit(category_, typeProperties_[e.type & 0x7F]);
    visitor.Visit(category_, GraphicGroupProperty(e.graphicGroup));
    visitor.Visit(category_, weightProperties_[static_cast<std::size_t>(e.GetWeight())]);
    visitor.Visit(category_, styleProperties_[static_cast<std::size_t>(e.GetStyle())]);
    if (attributeStore_)
        attributeStore_->VisitElement(slot, visitor);
}

void ZtDgnModel::AttachAttributes(std::unique_ptr<ZtDgnAttributeStore> store) {
    if (store)
        store->Bind(names_);
    attributeStore_ = std::move(store);
    // Lists and tuples made before hold the old attributes.
    attributes_.clear();
    tuplesBuilt_ = false;
    elementTuples_ = {};
    tupleElements_ = {};
}

// Made on first demand: a pick asks a handful of nodes, and a model of millions of
// elements should not carry an attribute object for each.
const ZtOaAttributeList& ZtDgnModel::ElementAttributes(std::uint32_t slot) const {
    std::unique_ptr<ZtOaAttributeList>& cached = attributes_[slot];
    if (cached)
        return *cached;
    // Built whole before it is kept: memory running out half-way must not leave a list
    // that later picks would take for the element's own.
    auto list = std::make_unique<ZtOaAttributeList>();
    if (const std::uint64_t dmrs = GetDmrs(slot))
        list->Add(new ZtOaNat64Attribute(kDmrsAttribute, dmrs));
    auto properties = std::make_unique<ZtOaPropertyAttribute>(category_);
    std::unique_ptr<ZtOaPropertyAttribute> attributes;
    if (attributeStore_ && !attributeStore_->GetElementPairs(slot).empty())
        attributes = std::make_unique<ZtOaPropertyAttribute>(attributeStore_->GetCategory());
    // Each property to the attribute of its category.
    struct Collect : ZtOaPropertyVisitor {
        ZtOaPropertyAttribute* element;
        ZtOaPropertyAttribute* attributes;
        void Visit(ZtUName* category, const ZtOaProperty& property) override {
            ZtOaPropertyAttribute* to = category == element->GetCategory() ? element : attributes;
            to->EditPropertyVector().PushBack(property);
        }
    } collect;
    collect.element = properties.get();
    collect.attributes = attributes.get();
    VisitElementProperties(slot, collect);
    list->Add(properties.release());
    if (attributes)
        list->Add(attributes.release());
    cached = std::move(list);
    return *cached;
}

const ZtOaAttribute* ZtDgnModel::FindElementAttribute(std::uint32_t slot, const char* name) const {
    if (!name ||
        (std::strcmp(name, kDmrsAttribute) != 0 && std::strcmp(name, kElementCategory) != 0 &&
         std::strcmp(name, kAttributeCategory) != 0))
        return nullptr;
    return ElementAttributes(slot).Find(name);
}

std::uint32_t ZtDgnModel::GetNumFindTuples() const {
    if (!tuplesBuilt_)
        BuildFindTuples();
    return static_cast<std::uint32_t>(tupleElements_.size());
}

// One pass over the records. Elements with attributes have properties of their own and no
// tuple; so have those met after the tuples' numbers ran out.
void ZtDgnModel::BuildFindTuples() const {
    const std::size_t count = elements_.Size();
    elementTuples_.assign(count, kNoElementTuple);
    tupleElements_.clear();
    std::unordered_map<std::uint64_t, std::uint16_t> known;
    std::uint64_t lastKey = ~std::uint64_t{0};
    std::uint16_t lastTuple = kNoElementTuple;
    for (std::size_t slot = 0; slot < count; ++slot) {
        if (attributeStore_ && !attributeStore_->GetElementPairs(slot).empty())
            continue;
        const ZtDgnElement& e = elements_[slot];
        // Every field that VisitElementProperties reads, bar the file, which is the model's.
        const std::uint64_t key =
            static_cast<std::uint64_t>(e.GetLevel()) | std::uint64_t{e.colour} << 8 |
            std::uint64_t{static_cast<std::uint8_t>(e.type & 0x7F)} << 16 |
            std::uint64_t{e.graphicGroup} << 24 | static_cast<std::uint64_t>(e.GetWeight()) << 40 |
            static_cast<std::uint64_t>(e.GetStyle()) << 48;
        if (key != lastKey) {
            const auto found = known.find(key);
            if (found != known.end()) {
                lastTuple = found->second;
            } else if (tupleElements_.size() < kNoElementTuple) {
                lastTuple = static_cast<std::uint16_t>(tupleElements_.size());
                known.emplace(key, lastTuple);
                tupleElements_.push_back(static_cast<std::uint32_t>(slot));
            } else {
                lastTuple = kNoElementTuple;
            }
            lastKey = key;
        }
        elementTuples_[slot] = lastTuple;
    }
    tuplesBuilt_ = true;
}

// The exact class is asked, not a cast: this runs once an element of a walk.
std::uint32_t ZtDgnModel::GetFindTuple(const ZtOaNode& node) const {
    std::uint32_t slot;
    if (typeid(node) == typeid(ZtDgnElementNode)) {
        const auto& leaf = static_cast<const ZtDgnElementNode&>(node);
        if (leaf.GetModel() != this)
            return kNoTuple;
        slot = leaf.GetSlot();
    } else if (typeid(node) == typeid(ZtDgnGroupNode)) {
        const auto& group = static_cast<const ZtDgnGroupNode&>(node);
        if (group.GetModel() != this)
            return kNoTuple;
        slot = group.GetSlot();
    } else {
        return kNoTuple;
    }
    if (!tuplesBuilt_)
        BuildFindTuples();
    const std::uint16_t tuple = elementTuples_[slot];
    return tuple == kNoElementTuple ? kNoTuple : tuple;
}

void ZtDgnModel::VisitFindTuple(std::uint32_t tuple, ZtOaPropertyVisitor& visitor) const {
    VisitElementProperties(tupleElements_[tuple], visitor);
}
