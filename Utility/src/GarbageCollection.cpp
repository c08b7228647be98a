#include "Utility/src/GarbageCollection.h"

GarbageCollection* GarbageCollection::pGC = nullptr;

std::string* GarbageCollection::Register(std::unique_ptr<std::string> text) {
    PushGlobalValue(text.get(), Instance()->m_strings);
    return text.release();
}

void GarbageCollection::Register(std::unique_ptr<GlobalItem> object) {
    PushGlobalValue(object.get(), Instance()->m_objects);
    object.release();
}
