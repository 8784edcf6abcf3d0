#include "Data/Impl/ODMDictionaryList.h"

#include "Data/Impl/SpinCountLock.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/odm/ODMFieldDictionary.h"

namespace orvo {
namespace odm {
namespace {

using internal::SpinCountLock;
using internal::SpinCountLockGuard;

struct DictionaryRegistry {
  SpinCountLock lock{SpinCountLock::kDefaultSpinCount};
  common::ORVO_Vector<ODMFieldDictionary*> dictionaries;

  // Unload: destroy() takes each dictionary out of the list itself, so the
  // first entry is always the next one. The lock, a member, goes after this.
  ~DictionaryRegistry() {
    while (dictionaries.size() != 0) dictionaries[0]->destroy();
  }
};

// Constructed on first use, so that a dictionary made while other statics
// are being built finds the lock ready; and destroyed after every static
// that was built before that first use.
DictionaryRegistry& registry() {
  static DictionaryRegistry instance;
  return instance;
}

[[maybe_unused]] const bool g_readyAtLoad = (registry(), true);

}  // namespace

void ODMDictionaryList::add(ODMFieldDictionary* dictionary) {
  DictionaryRegistry& r = registry();
  SpinCountLockGuard hold(r.lock);
  r.dictionaries.push_back(dictionary);
}

void ODMDictionaryList::remove(ODMFieldDictionary* dictionary) {
  DictionaryRegistry& r = registry();
  SpinCountLockGuard hold(r.lock);
  auto& list = r.dictionaries;
  for (unsigned int i = 0; i < list.size(); ++i) {
    if (list[i] != dictionary) continue;
    for (unsigned int j = i + 1; j < list.size(); ++j) list[j - 1] = list[j];
    list.removeLast();
    return;
  }
}

unsigned int ODMDictionaryList::count() {
  DictionaryRegistry& r = registry();
  SpinCountLockGuard hold(r.lock);
  return r.dictionaries.size();
}

bool ODMDictionaryList::contains(const ODMFieldDictionary* dictionary) {
  DictionaryRegistry& r = registry();
  SpinCountLockGuard hold(r.lock);
  for (const ODMFieldDictionary* entry : r.dictionaries) {
    if (entry == dictionary) return true;
  }
  return false;
}

}  // namespace odm
}  // namespace orvo
