/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief What the C++ layer of tav_db_api.hpp answers with: results, and the owners of lists and
 * texts. Include tav_db_api.hpp.
 */
#ifndef TAV_DB_API_VALUES_HPP_
#define TAV_DB_API_VALUES_HPP_

#include <tav_db_api_types.hpp>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tav {

/** \brief Releases what the library handed out. */
struct FreeBlock {
  /**
   * \brief Releases a block.
   * \param block A malloc block, or null.
   */
  void operator()(void* block) const noexcept { std::free(block); }
};

/**
 * \brief The records of a list in the block that the library made of them: no record is copied.
 *
 * Moved, never copied; a list that was moved from is empty. A pointer into the list lives as long
 * as the list that owns the block: data() and [] are not to be had from a temporary.
 *
 * \tparam Record AppInfo or MultiScreenApp.
 */
template <typename Record>
class List {
  static_assert(std::is_trivially_destructible_v<Record>, "free() is all that a record gets");

 public:
  using value_type = Record;              /**< The kind of the records. */
  using size_type = std::size_t;          /**< What counts them. */
  using difference_type = std::ptrdiff_t; /**< What is between two of them. */
  using reference = Record&;              /**< One of them. */
  using const_reference = const Record&;  /**< One of them, to be read. */
  using iterator = Record*;               /**< Walks over them. */
  using const_iterator = const Record*;   /**< Walks over them, for reading. */

  /** \brief An empty list. */
  List() noexcept = default;
  /**
   * \brief Takes a list over that a function of the C interface has handed out.
   * \param block A malloc block of that many records, or null.
   * \param count How many records there are; ignored when block is null.
   */
  explicit List(Record* block, std::size_t count) noexcept
      : m_block(block), m_size(block != nullptr ? count : 0) {}
  /**
   * \brief Takes another list's records over.
   * \param other The list, which is empty afterwards.
   */
  List(List&& other) noexcept
      : m_block(std::move(other.m_block)), m_size(std::exchange(other.m_size, 0)) {}
  /**
   * \brief Takes another list's records over, and releases its own.
   * \param other The list, which is empty afterwards.
   * \return This list.
   */
  List& operator=(List&& other) noexcept {
    m_block = std::move(other.m_block);
    m_size = std::exchange(other.m_size, 0);
    return *this;
  }
  ~List() = default;
  List(const List&) = delete;
  List& operator=(const List&) = delete;

  /**
   * \brief How many records there are.
   * \return Their number.
   */
  [[nodiscard]] std::size_t size() const noexcept { return m_size; }
  /**
   * \brief Whether there is no record.
   * \return true for none.
   */
  [[nodiscard]] bool empty() const noexcept { return m_size == 0; }
  /**
   * \brief The records, one after the other.
   * \return The first record, or null for an empty list.
   */
  [[nodiscard]] Record* data() & noexcept { return m_block.get(); }
  /** \copydoc data() */
  [[nodiscard]] const Record* data() const& noexcept { return m_block.get(); }
  /**
   * \brief Where a walk over the records begins.
   * \return The first record.
   */
  [[nodiscard]] iterator begin() noexcept { return data(); }
  /** \copydoc begin() */
  [[nodiscard]] const_iterator begin() const noexcept { return data(); }
  /**
   * \brief Where a walk over the records ends.
   * \return The place behind the last record.
   */
  [[nodiscard]] iterator end() noexcept { return data() + m_size; }
  /** \copydoc end() */
  [[nodiscard]] const_iterator end() const noexcept { return data() + m_size; }
  /**
   * \brief One record. Nothing checks the position.
   * \param position A number below size().
   * \return The record.
   */
  [[nodiscard]] Record& operator[](std::size_t position) & noexcept { return data()[position]; }
  /** \copydoc operator[]() */
  [[nodiscard]] const Record& operator[](std::size_t position) const& noexcept {
    return data()[position];
  }
  /**
   * \brief Hands the block over to the caller; the list is empty afterwards.
   * \return The block, to be released with free(), or null.
   */
  [[nodiscard]] Record* release() noexcept {
    m_size = 0;
    return m_block.release();
  }

  /** \cond */
  /* Looks into a list that is gone at the end of the line. */
  const Record* data() const&& = delete;
  const Record& operator[](std::size_t position) const&& = delete;
  /** \endcond */

 private:
  std::unique_ptr<Record[], FreeBlock> m_block;
  std::size_t m_size = 0;
};

/**
 * \brief A text in the block that the library made of it, or none. Moved, never copied.
 *
 * What looks into the text is not to be had from a temporary: give the owner a name, or copy the
 * text with str(). As an argument of a call, a temporary serves.
 */
class Text {
 public:
  /** \brief No text. */
  Text() noexcept = default;
  /**
   * \brief Takes a text over that a function of the C interface has handed out.
   * \param block A malloc block with a null-terminated text, or null for none.
   */
  explicit Text(char* block) noexcept : m_block(block) {}

  /**
   * \brief Whether there is a text, be it an empty one.
   * \return false for none.
   */
  [[nodiscard]] bool has_value() const noexcept { return m_block != nullptr; }
  /** \copydoc has_value() */
  [[nodiscard]] explicit operator bool() const noexcept { return has_value(); }
  /**
   * \brief The text with its terminator.
   * \return The text, "" for none; it lives as long as its owner.
   */
  [[nodiscard]] const char* c_str() const& noexcept { return has_value() ? m_block.get() : ""; }
  /**
   * \brief The text, its length counted anew.
   * \return The text, "" for none; it lives as long as its owner.
   */
  [[nodiscard]] std::string_view view() const& noexcept { return c_str(); }
  /**
   * \brief A copy of the text. Throws std::bad_alloc for want of memory.
   * \return The text, "" for none.
   */
  [[nodiscard]] std::string str() const { return std::string(view()); }
  /**
   * \brief Hands the block over to the caller, and has no text afterwards.
   * \return The block, to be released with free(), or null for none.
   */
  [[nodiscard]] char* release() noexcept { return m_block.release(); }

  /** \cond */
  /* Looks into a text that is gone at the end of the line. */
  const char* c_str() const&& = delete;
  std::string_view view() const&& = delete;
  /** \endcond */

 private:
  std::unique_ptr<char, FreeBlock> m_block;
};

inline TextView::TextView(const Text& text) noexcept
    : m_text(text.has_value() ? text.c_str() : nullptr) {}

/** \cond */
/* How the layer makes its results. */
namespace detail {
struct FilledBy {};
}  // namespace detail
/** \endcond */

/**
 * \brief The status of a call and its value, in one.
 *
 * A failed result has an empty value, and reading it is no error: an empty list, no text, 0, false,
 * a record of zeros, an ended Watch. It needs no exceptions, and nothing of it throws or ends the
 * program. Where a call keeps to another rule, its comment says so.
 *
 * Whether it succeeded is asked with has_value(), or with the result itself as a condition. The
 * latter is not to be had for a Result<bool>, in which a success would be taken for a yes.
 *
 * * and -> are not to be had from a temporary: give the result a name, or take the value out of
 * it, as for (const tav::AppInfo& app : tav::GetAppList().value()) does.
 *
 * \tparam T The value's type.
 */
template <typename T>
class [[nodiscard]] Result {
  static_assert(std::is_object_v<T> && std::is_nothrow_default_constructible_v<T>,
                "a failed result holds an empty value");

 public:
  using value_type = T; /**< The value's type. */

  /** \brief A failure. */
  Result() noexcept : m_value(), m_status(Status::kFailed) {}
  /**
   * \brief A result of one's own making, for a test's stand-in for example.
   * \param status The status.
   * \param value The value.
   */
  Result(Status status, T value) noexcept(std::is_nothrow_move_constructible_v<T>)
      : m_value(std::move(value)), m_status(status) {}
  /** \cond */
  /* Call(T&) fills the value where it is, and gives the status. */
  template <typename Call>
  Result(detail::FilledBy, const Call& call) : m_value(), m_status(call(m_value)) {
    if (!has_value()) m_value = T();
  }
  /** \endcond */

  /**
   * \brief How the call ended.
   * \return The status.
   */
  [[nodiscard]] tav::Status status() const noexcept { return m_status; }
  /**
   * \brief Whether the call did its work.
   * \return true for Status::kOk.
   */
  [[nodiscard]] bool has_value() const noexcept { return m_status == Status::kOk; }
  /** \copydoc has_value() */
  template <typename U = T, std::enable_if_t<!std::is_same_v<U, bool>, int> = 0>
  [[nodiscard]] explicit operator bool() const noexcept {
    return has_value();
  }

  /**
   * \brief The value.
   * \return The value, an empty one after a failure.
   */
  [[nodiscard]] T& value() & noexcept { return m_value; }
  /** \copydoc value() */
  [[nodiscard]] const T& value() const& noexcept { return m_value; }
  /**
   * \brief The value of a temporary, which outlives it.
   * \return The value, an empty one after a failure.
   */
  [[nodiscard]] T value() && noexcept(std::is_nothrow_move_constructible_v<T>) {
    return std::move(m_value);
  }
  /**
   * \brief The value, or another one after a failure.
   * \param other What stands in for it.
   * \return One of the two.
   */
  template <typename U>
  [[nodiscard]] T value_or(U&& other) const& {
    return has_value() ? m_value : static_cast<T>(std::forward<U>(other));
  }
  /**
   * \brief The value of a temporary, or another one after a failure.
   * \param other What stands in for it.
   * \return One of the two.
   */
  template <typename U>
  [[nodiscard]] T value_or(U&& other) && {
    return has_value() ? std::move(m_value) : static_cast<T>(std::forward<U>(other));
  }
  /** \copydoc value() */
  [[nodiscard]] T& operator*() & noexcept { return m_value; }
  /** \copydoc value() */
  [[nodiscard]] const T& operator*() const& noexcept { return m_value; }
  /**
   * \brief The value's members.
   * \return The value, an empty one after a failure.
   */
  [[nodiscard]] T* operator->() & noexcept { return &m_value; }
  /** \copydoc operator->() */
  [[nodiscard]] const T* operator->() const& noexcept { return &m_value; }

  /** \cond */
  /* Looks into a value that is gone at the end of the line. */
  void value() const&& = delete;
  void operator*() const&& = delete;
  void operator->() const&& = delete;
  /** \endcond */

 private:
  T m_value;
  Status m_status;
};

/** \cond */
/* The shapes of the calls. */
namespace detail {

// call(T*) fills a record or a number.
template <typename T, typename Call>
Result<T> Read(const Call& call) {
  return Result<T>(FilledBy(), [&](T& value) { return static_cast<Status>(call(&value)); });
}

template <typename Record>
bool IsCleared(const Record& record) noexcept {
  const Record cleared = {};
  return std::memcmp(&record, &cleared, sizeof(record)) == 0;
}

// call(Record**, int*) makes a list. Apps that went away or cannot be read have left cleared
// records at its end.
template <typename Record, typename Call>
Result<List<Record>> ReadList(const Call& call) {
  return Result<List<Record>>(FilledBy(), [&](List<Record>& list) {
    Record* block = nullptr;
    int count = 0;
    const auto status = static_cast<Status>(call(&block, &count));
    while (count > 0 && IsCleared(block[count - 1])) --count;
    list = List<Record>(block, static_cast<std::size_t>(count));
    return status;
  });
}

// call(char**) makes a text.
template <typename Call>
Result<Text> ReadText(const Call& call) {
  char* block = nullptr;
  const auto status = static_cast<Status>(call(&block));
  return {status, Text(block)};
}

}  // namespace detail
/** \endcond */

}  // namespace tav

#endif  // TAV_DB_API_VALUES_HPP_
