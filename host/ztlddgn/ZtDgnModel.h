#pragma once
#include "ztlddgn/ZtDgnChunkedArray.h"
#include "ztlddgn/ZtDgnElement.h"
#include "ztlddgn/ZtDgnElementNode.h"
#include "ztlddgn/ZtDgnElementStream.h"
#include "ztlinear/ZtLBox3f.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaProperty.h"
#include "ztplugin/ZtOpFindTupleSource.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class ZtDgnAttributeStore;
class ZtOaAttributeList;
class ZtOaPropertyAttribute;
class ZtUName;
class ZtUNameDict;

// What a design file's control block says of the whole model.
struct ZtDgnModelHeader {
    int dimension = 3;
    std::uint32_t subunitsPerMaster = 1;
    std::uint32_t uorsPerSubunit = 1;
    std::string masterUnitName;
    std::string subUnitName;
    ZtLPos3f globalOrigin; // in UORs
};

// A loaded DGN model: the partition of one design file, the owner of its element nodes.
// Its children are the top-level graphic elements in file order; cells and complex
// elements are groups of their components. The partition carries the attribute
// "ZtDgnSceneProps" with the property "ZtDgnUORsPerMaster".
//
// Element data lives in compact records in the model, not in the nodes; the attributes
// and properties that nodes hand out are made from the records when first asked for and
// shared wherever the values are the same.
//
// For selecting, the model is a tuple source: an element's tuple is its level, colour, type,
// graphic group, weight and style, for elements without attributes.
class ZtDgnModel : public ZtOaPartition, public ZtOpFindTupleSource {
public:
    // `path` becomes the source file name, and its last name the partition's name. The
    // names of properties are interned in `names` (the document's dictionary), which
    // must outlive the model; without one the model keeps a dictionary of its own.
    ZtDgnModel(const wchar_t* path, ZtUNameDict* names);
    // A model with no names yet, which touches no dictionary and so may be built on a
    // thread of its own; BindNames must be called before anything but the building.
    struct UnnamedTag {};
    ZtDgnModel(const wchar_t* path, UnnamedTag);
    ~ZtDgnModel() override;

    // Interns the names of the model's properties in `names` (its own dictionary if null)
    // and gives the partition its scene attribute; once, for a model made unnamed.
    void BindNames(ZtUNameDict* names);

    // The control block's facts, and the scene attribute that goes with them.
    void SetHeader(const ZtDgnModelHeader& header);
    const ZtDgnModelHeader& GetHeader() const { return header_; }
    // Subunits per master unit times UORs per subunit.
    double GetUorsPerMaster() const { return uorsPerMaster_; }
    // Sets the factor alone, for a model made in memory without a file (any value, even
    // one that no control block could give).
    void SetUorsPerMaster(double factor);

    // The value option 10 of the loader had when the model was loaded.
    bool GetOption10AtLoad() const { return option10AtLoad_; }
    void SetOption10AtLoad(bool value) { option10AtLoad_ = value; }
    // Elements in the file, the control block, non-graphic and deleted ones included.
    std::uint32_t GetFileElementCount() const { return fileElementCount_; }
    // Whatever the loader passed over in a file that loaded all the same.
    const std::vector<std::string>& GetWarnings() const { return warnings_; }
    void AddWarning(std::string warning) { warnings_.push_back(std::move(warning)); }

    // The graphic elements that became nodes, in file order.
    std::size_t GetNumElements() const { return elements_.Size(); }
    const ZtDgnElement& GetElement(std::size_t slot) const { return elements_[slot]; }
    // The element's range divided by the factor (the global origin is not applied).
    ZtLBox3f GetElementBox(std::size_t slot) const;
    // A model whose elements are all its own children (no cell or complex element with
    // components) hands out their boxes from its records.
    bool HasFlatBoxes() const override;
    void FillChildBoxes(std::size_t first, std::size_t count, ZtLBox3f* boxes) const override;
    // The element's linkage words, whole linkages only; null if it has none.
    const std::uint16_t* GetLinkageWords(const ZtDgnElement& element) const {
        return element.linkageWords ? &linkages_[element.linkageFirst] : nullptr;
    }
    // The element's DMRS value (see ZtDgnFindDmrs); 0 if it has none.
    std::uint64_t GetDmrs(std::size_t slot) const;

    // Building, for the reader. First room for the top-level elements of a file of
    // `fileBytes`, then each graphic element (`raw`, at least a graphic header long, the
    // `index`th of the file) decoded straight into the model's arrays with its node, a
    // group if `group`, added to `parent` or, if that is null, to the model itself. Gives
    // the node, or null if the model can hold no more elements or linkage words. Sets
    // `linkageOverrun` if linkages run past the element's end (they are kept up to
    // there). Last, the number of elements in the file, which ends the building.
    void ReserveForFile(std::uint64_t fileBytes);
    ZtOaNode* AddElement(const ZtDgnRawElement& raw, std::uint32_t index, bool group,
                         ZtDgnGroupNode* parent, bool* linkageOverrun);
    void FinishLoad(std::uint32_t fileElementCount);

    // Gives the elements the attributes of `store` (made for this model), in place of any
    // they had: each element whose key has rows gets the category "ZtDgnPDSAttributes".
    void AttachAttributes(std::unique_ptr<ZtDgnAttributeStore> store);
    // The attributes attached; null if none were.
    const ZtDgnAttributeStore* GetAttributeStore() const { return attributeStore_.get(); }

    // For the element nodes.
    const ZtOaAttribute* FindElementAttribute(std::uint32_t slot, const char* name) const;
    void VisitElementProperties(std::uint32_t slot, ZtOaPropertyVisitor& visitor) const;

    std::uint32_t GetNumFindTuples() const override;
    std::uint32_t GetFindTuple(const ZtOaNode& node) const override;
    void VisitFindTuple(std::uint32_t tuple, ZtOaPropertyVisitor& visitor) const override;

private:
    // The tuple numbers that fit an element's two bytes; the last one means none.
    static constexpr std::uint16_t kNoElementTuple = 0xFFFF;

    void BuildFindTuples() const;
    const ZtOaProperty& GraphicGroupProperty(std::uint16_t group) const;
    const ZtOaAttributeList& ElementAttributes(std::uint32_t slot) const;

    std::unique_ptr<ZtUNameDict> ownNames_;
    ZtUNameDict* names_ = nullptr;
    ZtDgnModelHeader header_;
    double uorsPerMaster_ = 1.0;
    bool option10AtLoad_ = true;
    std::uint32_t fileElementCount_ = 0;
    // No element has gone into a group: each one's slot is its place among the children,
    // as long as nothing was added to the model besides.
    bool allTopLevel_ = true;
    std::vector<std::string> warnings_;
    ZtOaPropertyAttribute* sceneProps_ = nullptr; // owned by the partition's attribute list

    ZtDgnChunkedArray<ZtDgnElement> elements_;
    // Linkage words of all elements, each element's side by side; the first chunk holds
    // the longest element's.
    ZtDgnChunkedArray<std::uint16_t, 65536> linkages_;
    ZtDgnChunkedArray<ZtDgnElementNode> leaves_;
    ZtDgnChunkedArray<ZtDgnGroupNode, 64> groups_;

    // The properties that element nodes share.
    ZtUName* category_ = nullptr;
    ZtUName* typeName_ = nullptr;
    ZtUName* graphicGroupName_ = nullptr;
    ZtUName* weightName_ = nullptr;
    ZtUName* styleName_ = nullptr;
    std::vector<ZtOaProperty> levelProperties_;  // by level
    std::vector<ZtOaProperty> colourProperties_; // by colour
    std::vector<ZtOaProperty> typeProperties_;   // by type
    std::vector<ZtOaProperty> weightProperties_; // by weight
    std::vector<ZtOaProperty> styleProperties_;  // by style
    std::unique_ptr<ZtOaProperty> sourceFileProperty_;
    std::unique_ptr<ZtDgnAttributeStore> attributeStore_;
    mutable std::unordered_map<std::uint16_t, std::unique_ptr<ZtOaProperty>> graphicGroups_;
    mutable std::unordered_map<std::uint32_t, std::unique_ptr<ZtOaAttributeList>> attributes_;
    // Made on the first select: each element's tuple, and an element of each tuple.
    mutable bool tuplesBuilt_ = false;
    mutable std::vector<std::uint16_t> elementTuples_;
    mutable std::vector<std::uint32_t> tupleElements_;
};
