// The process-wide list of live dictionaries, guarded by its own spin-count
// lock, which guards nothing else. Dictionaries left in the list when the
// library unloads are destroyed then.
#ifndef ORVO_DATA_IMPL_ODM_DICTIONARY_LIST_H_
#define ORVO_DATA_IMPL_ODM_DICTIONARY_LIST_H_

namespace orvo {
namespace odm {

class ODMFieldDictionary;

class ODMDictionaryList {
 public:
  static void add(ODMFieldDictionary* dictionary);
  // Removes the dictionary, moving the later entries down by one.
  static void remove(ODMFieldDictionary* dictionary);
  static unsigned int count();
  static bool contains(const ODMFieldDictionary* dictionary);
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ODM_DICTIONARY_LIST_H_
