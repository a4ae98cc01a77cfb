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

// Answers before it returns, and relies on the component model that the user interface has
// initialised on its thread.
void Platform::showItem(const std::string& path, std::chrono::milliseconds,
                        const std::function<void(bool)>& done)
{
    done(openFolderAndSelect(path));
}
