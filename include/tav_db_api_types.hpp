/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief What the C++ layer of tav_db_api.hpp is asked with: its enumerations, filters, pages and
 * texts, and the records' own texts. Include tav_db_api.hpp.
 */
#ifndef TAV_DB_API_TYPES_HPP_
#define TAV_DB_API_TYPES_HPP_

#include <tav_db_api.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace tav {

/** \brief One app, the record of the C interface. Its texts are read with TextOf. */
using AppInfo = ::tav_app_info_s;
/** \brief One app of a multi-screen list, the record of the C interface. */
using MultiScreenApp = ::tav_app_ms_s;

/** \brief How a call ended. Any value but kOk is a failure, also one that has no name here. */
enum class [[nodiscard]] Status : int{
    kOk = 0,      /**< The call did its work. */
    kFailed = -1, /**< Not found, a bad argument, refused, no memory or no usable database. */
    kBusy = -2    /**< The database stayed busy. */
};

/** \brief What a question answers for which the library does not tell a no from a failure. */
enum class [[nodiscard]] Answer : int{
    kYes = 0,  /**< It is so. */
    kNo = -1,  /**< It is not so, there is no such app, or the call failed or was refused. */
    kBusy = -2 /**< The database stayed busy. */
};

/** \brief The order of a list. Any other value is the catalogue's order. */
enum class ViewMode : int {
  kMostUsed = TAV_APP_VIEWMODE_MOST_USED,             /**< The highest use count first. */
  kCatalogue = TAV_APP_VIEWMODE_CATALOGUE,            /**< The catalogue's order. */
  kLastDownloaded = TAV_APP_VIEWMODE_LAST_DOWNLOADED, /**< See TAV_APP_VIEWMODE_LAST_DOWNLOADED. */
  kTitle = TAV_APP_VIEWMODE_TITLE,                    /**< By title. */
  kTitleDescending = TAV_APP_VIEWMODE_TITLE_DESCENDING,  /**< By title, the last one first. */
  kRecentlyLaunched = TAV_APP_VIEWMODE_RECENTLY_LAUNCHED /**< The last launched first. */
};

/**
 * \brief A set of the kinds by which apps are featured: the bits of tav_app_filter_s::featured.
 *
 * What the kinds mean is the service's business. kKind1 | kKind2 lets kKind8 through as well, and
 * a set without any of the four is refused.
 */
enum class Featured : int {
  kKind1 = 1,    /**< Apps whose app_featured is 1. */
  kKind2 = 2,    /**< Apps whose app_featured is 2. */
  kKind4 = 4,    /**< Apps whose app_featured is 4. */
  kKind8 = 8,    /**< Apps whose app_featured is 8. */
  kEvery = 65535 /**< Every app. */
};

/**
 * \brief A set of types of apps: the bits of tav_app_filter_s::app_type.
 *
 * What the types mean is the service's business. A set without any of the two is refused.
 */
enum class AppTypes : int {
  kType2 = 2,    /**< Apps whose app_type is 2. */
  kType4 = 4,    /**< Apps whose app_type is 4. */
  kEvery = 65535 /**< Every app. */
};

/**
 * \brief The union of two sets.
 * \param left A set.
 * \param right Another.
 * \return The kinds that are in either.
 */
[[nodiscard]] constexpr Featured operator|(Featured left, Featured right) noexcept {
  return static_cast<Featured>(static_cast<int>(left) | static_cast<int>(right));
}
/**
 * \brief What two sets have in common; Featured{} for nothing.
 * \param left A set.
 * \param right Another.
 * \return The kinds that are in both.
 */
[[nodiscard]] constexpr Featured operator&(Featured left, Featured right) noexcept {
  return static_cast<Featured>(static_cast<int>(left) & static_cast<int>(right));
}
/**
 * \brief Adds kinds to a set.
 * \param set The set.
 * \param more What it holds from now on as well.
 * \return The set.
 */
constexpr Featured& operator|=(Featured& set, Featured more) noexcept {
  return set = set | more;
}
/**
 * \brief The union of two sets.
 * \param left A set.
 * \param right Another.
 * \return The types that are in either.
 */
[[nodiscard]] constexpr AppTypes operator|(AppTypes left, AppTypes right) noexcept {
  return static_cast<AppTypes>(static_cast<int>(left) | static_cast<int>(right));
}
/**
 * \brief What two sets have in common; AppTypes{} for nothing.
 * \param left A set.
 * \param right Another.
 * \return The types that are in both.
 */
[[nodiscard]] constexpr AppTypes operator&(AppTypes left, AppTypes right) noexcept {
  return static_cast<AppTypes>(static_cast<int>(left) & static_cast<int>(right));
}
/**
 * \brief Adds types to a set.
 * \param set The set.
 * \param more What it holds from now on as well.
 * \return The set.
 */
constexpr AppTypes& operator|=(AppTypes& set, AppTypes more) noexcept {
  return set = set | more;
}

/** \brief Which apps a list holds: every visible app, unless it is told otherwise. */
struct Filter {
  Featured featured = Featured::kEvery;  /**< Apps of these kinds. */
  AppTypes app_types = AppTypes::kEvery; /**< Apps of these types. */
  int premium_game = 0;                  /**< Accepted, and selects nothing. */
};

/** \brief Which part of a list is wanted: the whole list, unless it is told otherwise. */
struct Page {
  int index = -1; /**< The first app, from 0; negative for no paging. */
  int count = 0;  /**< The most apps; 0 or less for all that there are from index on. */
};

class Text;

/**
 * \brief A null-terminated text that somebody else owns, or none, which is a null pointer in C.
 *
 * What calls are asked with, and what the callable of a Watch is told. Made of a std::string, it
 * ends at the first null byte. Like a std::string_view, it must not outlive the text; unlike one,
 * it is known to have a terminator, and is therefore not made of one.
 */
class TextView {
 public:
  /**
   * \brief A null-terminated text, a record's field for example.
   * \param text The text, or null for none.
   */
  TextView(const char* text) noexcept : m_text(text) {}
  /**
   * \brief A string.
   * \param text The text.
   */
  TextView(const std::string& text) noexcept : m_text(text.c_str()) {}
  /**
   * \brief A text that the library made.
   * \param text The text's owner.
   */
  TextView(const Text& text) noexcept;

  /**
   * \brief Whether there is a text, be it an empty one.
   * \return false for none.
   */
  [[nodiscard]] bool has_value() const noexcept { return m_text != nullptr; }
  /** \copydoc has_value() */
  [[nodiscard]] explicit operator bool() const noexcept { return has_value(); }
  /**
   * \brief The text as the C interface takes it.
   * \return The text with its terminator, or null for none.
   */
  [[nodiscard]] const char* data() const noexcept { return m_text; }
  /**
   * \brief The text, its length counted anew.
   * \return The text, "" for none.
   */
  [[nodiscard]] std::string_view view() const noexcept { return has_value() ? m_text : ""; }

 private:
  const char* m_text;
};

/**
 * \brief A text field of a record: TextOf(app.app_title). Nothing is copied.
 * \param field The field.
 * \return The bytes before the terminator, or all of them when there is none; they live as long as
 * the record.
 */
template <std::size_t kSize>
[[nodiscard]] std::string_view TextOf(const char (&field)[kSize]) noexcept {
  const void* const end = std::memchr(field, '\0', kSize);
  return {field,
          end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - field) : kSize};
}
/** \cond */
/* The field of a record that is gone at the end of the line. */
template <std::size_t kSize>
std::string_view TextOf(const char (&&field)[kSize]) = delete;
/** \endcond */

}  // namespace tav

#endif  // TAV_DB_API_TYPES_HPP_
