#include "editor/editorHost.h"

#include <cassert>

namespace {

cEditorHost* hostOfProcess = nullptr;

}  // namespace

cEditorHost::cEditorHost() { hostOfProcess = this; }

cEditorHost::~cEditorHost() {
    if (hostOfProcess == this) hostOfProcess = nullptr;
}

cEditorHost& cEditorHost::current() {
    assert(hostOfProcess != nullptr);
    return *hostOfProcess;
}
