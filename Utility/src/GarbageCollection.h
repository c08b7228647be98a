#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Base of every process-wide object.
class GlobalItem {
public:
    virtual ~GlobalItem() = default;
};

/// Registry of the process-wide strings and objects. They live until the process ends: a host may
/// call from an exit handler. Relies on the caller's lock.
class GarbageCollection {
public:
    /// A new copy of the string, registered.
    static std::string* CreateGlobalStr(const std::string& text) {
        return Register(std::make_unique<std::string>(text));
    }

    /// A new object made of the arguments, registered.
    template <class Object, class... Arguments>
    static Object* CreateGlobalObj(Arguments&&... arguments) {
        auto object = std::make_unique<Object>(std::forward<Arguments>(arguments)...);
        Object* const registered = object.get();
        Register(std::move(object));
        return registered;
    }

    /// Adds the pointer to the list unless it is null or already there.
    template <class Item>
    static void PushGlobalValue(Item* item, std::vector<Item*>& list) {
        if (item && std::find(list.begin(), list.end(), item) == list.end())
            list.push_back(item);
    }

    static GarbageCollection* Instance() {
        if (!pGC)
            pGC = new GarbageCollection();
        return pGC;
    }

    const std::vector<std::string*>& Strings() const { return m_strings; }
    const std::vector<GlobalItem*>& Objects() const { return m_objects; }

    static GarbageCollection* pGC;

private:
    static std::string* Register(std::unique_ptr<std::string> text);
    static void Register(std::unique_ptr<GlobalItem> object);

    std::vector<std::string*> m_strings;
    std::vector<GlobalItem*> m_objects;
};
