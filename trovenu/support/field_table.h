#pragma once

/// \file
/// The tables of persistent classes: one row for each field, which defaults, loading, storing and comparing
/// all follow. What they load from and store to is an object with the members of `CKqArchive` (GetInt,
/// GetDbl, GetStr, SetInt, SetDbl, SetStr); `IniSection` is another one.

#include <algorithm>
#include <string>
#include <type_traits>
#include <variant>

#include "trovenu/platform/theme.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// The theme's colour of that index, looked up when it is needed.
struct ThemeColor {
  int index;
};

/// The value that a field has by default.
using FieldDefault = std::variant<int, double, const char *, ThemeColor>;

/// One field of a class.
template <class Owner>
struct Field {
  const char *key;
  std::variant<int Owner::*, double Owner::*, Color Owner::*, SString Owner::*> member;
  /// For `SetFieldsToDefault`.
  FieldDefault value = 0;
  /// Whether `EqualFields` looks at it.
  bool compared = true;
};

/// A pointer to an array of a class; the values are of one of these types.
template <class Owner, int kCount, class... Value>
using ArrayMember = std::variant<Value (Owner::*)[kCount]...>;

/// An array of `kCount` fields of a class, the elements of which have the same key but for their number.
template <class Owner, int kCount, class Member = ArrayMember<Owner, kCount, int, double, Color, SString>>
struct ElementField {
  static constexpr int kElements = kCount;

  const char *key;
  Member member;
  bool compared = true;
};

/// The same for a class without texts. (GCC warns where a text would not fit into the class.)
template <class Owner, int kCount>
using NumberElementField = ElementField<Owner, kCount, ArrayMember<Owner, kCount, int, double, Color>>;

/// The category of an object in an archive: the name alone for the index -1, else with the index behind it.
inline std::string CategoryName(const char *name, int index) {
  return index == -1 ? std::string(name) : name + std::to_string(index);
}

/// The key of an element in an archive: "5.LineColor".
inline std::string ElementKey(int element, const char *key) { return std::to_string(element) + "." + key; }

/// A key of which the number comes last: "ShowBaseLine3".
inline std::string NumberedKey(const char *key, int number) { return key + std::to_string(number); }

/// \name One value
/// Colours are stored as whole numbers.
/// @{
template <class Store, class Value>
void LoadValue(Store &store, const char *key, Value &value, const Value &defaultValue) {
  if constexpr (std::is_same_v<Value, SString>) {
    value = store.GetStr(key, defaultValue.c_str());
  } else if constexpr (std::is_same_v<Value, double>) {
    value = store.GetDbl(key, defaultValue);
  } else {
    value = static_cast<Value>(store.GetInt(key, static_cast<int>(defaultValue)));
  }
}

template <class Store, class Value>
void StoreValue(Store &store, const char *key, const Value &value, const Value &defaultValue) {
  if constexpr (std::is_same_v<Value, SString>) {
    store.SetStr(key, value.c_str(), defaultValue.c_str());
  } else if constexpr (std::is_same_v<Value, double>) {
    store.SetDbl(key, value, defaultValue);
  } else {
    store.SetInt(key, static_cast<int>(value), static_cast<int>(defaultValue));
  }
}
/// @}

/// \name Fields of an object
/// `fields` is an array or a span of the table.
/// @{

/// Gives every field the value of its row. A number goes to a text as the text's assignment has it.
template <class Fields, class Owner>
void SetFieldsToDefault(const Fields &fields, Owner &object) {
  for (const Field<Owner> &field : fields) {
    std::visit(
        [&](auto member, auto value) {
          using Value = std::remove_reference_t<decltype(object.*member)>;
          if constexpr (std::is_same_v<decltype(value), ThemeColor>) {
            if constexpr (std::is_same_v<Value, Color>) object.*member = CThemeManager::GetColor(value.index);
          } else if constexpr (std::is_same_v<decltype(value), const char *> ||
                               std::is_same_v<Value, SString>) {
            if constexpr (std::is_same_v<Value, SString>) object.*member = value;
          } else {
            object.*member = static_cast<Value>(value);
          }
        },
        field.member, field.value);
  }
}

/// Reads every field; one that the store lacks becomes that of `defaults`, which may be the object itself.
template <class Store, class Fields, class Owner>
void LoadFields(Store &store, const Fields &fields, Owner &object, const Owner &defaults) {
  for (const Field<Owner> &field : fields) {
    std::visit([&](auto member) { LoadValue(store, field.key, object.*member, defaults.*member); },
               field.member);
  }
}

template <class Store, class Fields, class Owner>
void StoreFields(Store &store, const Fields &fields, const Owner &object, const Owner &defaults) {
  for (const Field<Owner> &field : fields) {
    std::visit([&](auto member) { StoreValue(store, field.key, object.*member, defaults.*member); },
               field.member);
  }
}

template <class Fields, class Owner>
void CopyFields(const Fields &fields, Owner &target, const Owner &source) {
  for (const Field<Owner> &field : fields) {
    std::visit([&](auto member) { target.*member = source.*member; }, field.member);
  }
}

/// True if the compared fields of both objects are equal.
template <class Fields, class Owner>
bool EqualFields(const Fields &fields, const Owner &a, const Owner &b) {
  for (const Field<Owner> &field : fields) {
    if (!field.compared) continue;
    if (!std::visit([&](auto member) { return a.*member == b.*member; }, field.member)) return false;
  }
  return true;
}
/// @}

/// \name Elements of the arrays of an object
/// @{

/// Reads element `i` of one array under the given key.
template <class Store, class Element, class Owner>
void LoadElement(Store &store, const char *key, const Element &field, int i, Owner &object,
                 const Owner &defaults) {
  std::visit([&](auto member) { LoadValue(store, key, (object.*member)[i], (defaults.*member)[i]); },
             field.member);
}

template <class Store, class Element, class Owner>
void StoreElement(Store &store, const char *key, const Element &field, int i, const Owner &object,
                  const Owner &defaults) {
  std::visit([&](auto member) { StoreValue(store, key, (object.*member)[i], (defaults.*member)[i]); },
             field.member);
}

/// Reads all arrays of a table, element by element, under keys such as "5.LineColor".
template <class Store, class Fields, class Owner>
void LoadElements(Store &store, const Fields &fields, Owner &object, const Owner &defaults) {
  for (int i = 0; i < std::remove_cvref_t<decltype(fields[0])>::kElements; ++i) {
    for (const auto &field : fields) {
      LoadElement(store, ElementKey(i, field.key).c_str(), field, i, object, defaults);
    }
  }
}

template <class Store, class Fields, class Owner>
void StoreElements(Store &store, const Fields &fields, const Owner &object, const Owner &defaults) {
  for (int i = 0; i < std::remove_cvref_t<decltype(fields[0])>::kElements; ++i) {
    for (const auto &field : fields) {
      StoreElement(store, ElementKey(i, field.key).c_str(), field, i, object, defaults);
    }
  }
}

template <class Fields, class Owner>
void CopyElements(const Fields &fields, Owner &target, const Owner &source) {
  for (const auto &field : fields) {
    std::visit([&](auto member) { std::ranges::copy(source.*member, target.*member); }, field.member);
  }
}

/// True if the compared arrays of both objects are equal.
template <class Fields, class Owner>
bool EqualElements(const Fields &fields, const Owner &a, const Owner &b) {
  for (const auto &field : fields) {
    if (!field.compared) continue;
    if (!std::visit([&](auto member) { return std::ranges::equal(a.*member, b.*member); }, field.member)) {
      return false;
    }
  }
  return true;
}
/// @}

}  // namespace trovenu
