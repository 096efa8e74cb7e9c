#include "ztplugin/ZtOpFilePlugin.h"

#include "ztutil/ZtUSysString.h"

#include <string>

// The destructors are out of line so that the classes' type information lives in the
// host library alone.
ZtOpFilePlugin::~ZtOpFilePlugin() = default;
ZtOpScenePropsPlugin::~ZtOpScenePropsPlugin() = default;
ZtOpSceneSetPlugin::~ZtOpSceneSetPlugin() = default;

void ZtOpFilePlugin::IGetFormatFilter(ZtUWideStringBuffer* filter) {
    ZtUWideStringBuffer extension;
    IGetFormatExtension(&extension);
    filter->SetString((L"*" + extension.Str()).c_str());
}

int ZtOpFilePlugin::IUnderstandsFile(const wchar_t* path) {
    ZtUWideStringBuffer extension;
    IGetFormatExtension(&extension);
    const std::size_t length = ZtUSysString::WideStrlen(path);
    if (extension.IsEmpty() || length < extension.GetLength())
        return 0;
    ZtUWideStringBuffer tail(path + (length - extension.GetLength()));
    tail.LowerCase();
    ZtUWideStringBuffer wanted(extension.GetString());
    wanted.LowerCase();
    return tail == wanted.GetString();
}
