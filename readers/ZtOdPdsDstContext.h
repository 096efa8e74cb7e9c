#pragma once

class ZtOpFolderItem;
class ZtUNameDict;

// What all consumers of one display-set import share. Made by the import action; it
// outlives the read of the file and owns neither field.
struct ZtOdPdsDstContext {
    ZtUNameDict* names = nullptr;     // the document's name dictionary
    ZtOpFolderItem* folder = nullptr; // collects the selection sets of this import
};
