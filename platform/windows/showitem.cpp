// SPDX-License-Identifier: Apache-2.0
#include <platform/showitem.h>

#include <platform/windows/widestring.h>

#include <windows.h>

#include <shlobj.h>

#include <memory>

namespace {

struct FreeItemList
{
    void operator()(ITEMIDLIST* list) const { ILFree(list); }
};

bool openFolderAndSelect(const std::string& path)
{
    const std::wstring widePath = Platform::wideString(path);
    const std::unique_ptr<ITEMIDLIST, FreeItemList> item(ILCreateFromPathW(widePath.c_str()));
    return item && SHOpenFolderAndSelectItems(item.get(), 0, nullptr, 0) == S_OK;
}

} // namespace

// The shell answers before it returns. It needs the component model, which Qt has initialised on
// the thread of the user interface.
void Platform::showItem(const std::string& path, std::chrono::milliseconds,
                        const std::function<bool()>& /*isWanted*/,
                        const std::function<void(bool)>& done)
{
    done(openFolderAndSelect(path));
}
