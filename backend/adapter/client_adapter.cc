#include "backend/adapter/client_adapter.h"

namespace vexa {

namespace {

ClientAdapter*& installed() {
    static ClientAdapter* adapter = nullptr;
    return adapter;
}

}  // namespace

ClientAdapter* GetAdapter() { return installed(); }

void installAdapter(ClientAdapter* adapter) { installed() = adapter; }

}  // namespace vexa
