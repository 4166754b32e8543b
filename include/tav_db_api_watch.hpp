/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The C++ layer of tav_db_api.hpp: callbacks for changes of settings. Include
 * tav_db_api.hpp.
 *
 * Threads. Unlike the rest of the layer, nothing here takes a lock. Making a Watch, ending it and
 * the calls must not happen at the same time on different threads. The calls come from the main
 * context of the thread that began to watch the setting, which somebody has to run, for example
 * with g_main_loop_run: that thread is the place for all three.
 *
 * Exceptions. The sources of a program that watch a setting share the function that calls their
 * callables, and those with callables of one type share more: all of them are compiled alike, with
 * exceptions or without.
 */
#ifndef TAV_DB_API_WATCH_HPP_
#define TAV_DB_API_WATCH_HPP_

#include <tav_db_api_values.hpp>

#include <exception>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace tav {

/** \cond */
/* The chains of callables behind the callbacks of the C interface. */
namespace detail {

// What a Watch holds: a callable's place in the chain of its setting.
class Link {
 public:
  Link() = default;
  virtual ~Link() = default;
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  // Takes the link out of its chain. It is gone when this returns, or when the walk that is under
  // way has ended.
  virtual void End() noexcept = 0;
};

// A setting: what its callback is handed, what a callable is told, and the functions that register
// a callback.
struct FactoryResetType {
  using Raw = int;
  using Value = int;
  static constexpr auto kRegister = tav_register_factory_reset_type_changed_cb;
  static constexpr auto kUnregister = tav_unregister_factory_reset_type_changed_cb;
};
struct AppsyncStart {
  using Raw = int;
  using Value = int;
  static constexpr auto kRegister = tav_register_appsync_start_changed_cb;
  static constexpr auto kUnregister = tav_unregister_appsync_start_changed_cb;
};
struct HomedeckResetStatus {
  using Raw = int;
  using Value = int;
  static constexpr auto kRegister = tav_register_homedeck_reset_status_changed_cb;
  static constexpr auto kUnregister = tav_unregister_homedeck_reset_status_changed_cb;
};
struct InstalledAppId {
  using Raw = const char*;
  using Value = TextView;
  static constexpr auto kRegister = tav_register_installed_appid_changed_cb;
  static constexpr auto kUnregister = tav_unregister_installed_appid_changed_cb;
};

// The callables of one setting. The library tells callbacks apart by their functions alone, so all
// callables share one, OnChange, which is registered while the chain has a link in use. A link that
// is ended during a walk stays until the walk is over, and with it the callable, which may be the
// one that is being called.
template <typename Setting>
class Chain {
 public:
  using Value = typename Setting::Value;

  class Callee : public Link {
   public:
    virtual void Call(Value value) = 0;
    void End() noexcept override { Remove(*this); }

   private:
    friend Chain;
    Callee* m_next = nullptr;
    bool m_is_ended = false;
  };

  // Takes the link over; null for want of memory.
  static Status Add(std::unique_ptr<Callee> link) {
    if (link == nullptr) return Status::kFailed;
    if (m_in_use == 0 && Setting::kRegister(OnChange, nullptr) != 0) return Status::kFailed;
    ++m_in_use;
    Callee** place = &m_first;
    while (*place != nullptr) place = &(*place)->m_next;
    *place = link.release();
    return Status::kOk;
  }

 private:
  // Keeps the ended links of the chain until the last walk is over.
  class Walk {
   public:
    Walk() noexcept { ++m_walks; }
    ~Walk() {
      if (--m_walks == 0) Sweep();
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
  };

  static void Remove(Callee& link) noexcept {
    link.m_is_ended = true;
    if (--m_in_use == 0) Setting::kUnregister(OnChange);
    if (m_walks == 0) Sweep();
  }

  // A callable's end may end other links or add some: the chain is looked through anew each time.
  static void Sweep() noexcept {
    for (Callee** place = &m_first; *place != nullptr;) {
      Callee* const link = *place;
      if (!link->m_is_ended) {
        place = &link->m_next;
        continue;
      }
      *place = link->m_next;
      delete link;
      place = &m_first;
    }
  }

  // An exception goes on to the library, which logs it, when all callables have been called.
  static void OnChange(typename Setting::Raw value, void* /*user_data*/) {
    const Walk walk;
#if defined(__cpp_exceptions)
    std::exception_ptr thrown;
#endif
    for (Callee* link = m_first; link != nullptr; link = link->m_next) {
      if (link->m_is_ended) continue;
#if defined(__cpp_exceptions)
      try {
        link->Call(value);
      } catch (...) {
        if (thrown == nullptr) thrown = std::current_exception();
      }
    }
    if (thrown != nullptr) std::rethrow_exception(thrown);
#else
      link->Call(value);
    }
#endif
  }

  static inline Callee* m_first = nullptr;
  static inline unsigned long m_in_use = 0;
  static inline unsigned long m_walks = 0;
};

// Whether there is nothing to call: a null function, an empty std::function.
template <typename Callable>
bool IsNothing(const Callable& callable) noexcept {
  if constexpr (std::is_pointer_v<Callable>) {
    return callable == nullptr;
  } else if constexpr (std::is_constructible_v<bool, const Callable&> &&
                       !std::is_convertible_v<const Callable&, bool>) {
    return !static_cast<bool>(callable);
  } else {
    return false;
  }
}

}  // namespace detail
/** \endcond */

/**
 * \brief A callable that is called when a setting changes, for as long as this lives.
 *
 * Owns the callable: it goes with the Watch or, when that happens while a change is being told, as
 * soon as all have been told. So a callable may end its own Watch, which does not take away what
 * runs, and any other, which is then not called any more. What it refers to must live as long as
 * the Watch. Moved, never copied.
 *
 * Callables of a setting are called in the order in which they came. There may be many, of one type
 * too. One that comes while a change is being told is told it as well: a callable that begins
 * another like itself in every call is never done. An exception that leaves a callable is logged
 * and dropped by the library, when the other callables have been called; of several, the first is
 * logged.
 *
 * See tav_db_api_watch.hpp for the rule on threads.
 */
class [[nodiscard]] Watch {
 public:
  /** \brief Watches nothing. */
  Watch() noexcept = default;
  /**
   * \brief Takes over what another one watches.
   * \param other The other, which watches nothing afterwards.
   */
  Watch(Watch&& other) noexcept : m_link(std::exchange(other.m_link, nullptr)) {}
  /**
   * \brief Takes over what another one watches, and ends its own.
   * \param other The other, which watches nothing afterwards.
   * \return This one.
   */
  Watch& operator=(Watch&& other) noexcept {
    detail::Link* const old = std::exchange(m_link, std::exchange(other.m_link, nullptr));
    if (old != nullptr) old->End();
    return *this;
  }
  /** \brief Ends it. */
  ~Watch() { reset(); }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  /**
   * \brief Whether a setting is watched.
   * \return false for none.
   */
  [[nodiscard]] explicit operator bool() const noexcept { return m_link != nullptr; }
  /** \brief Ends it before its time: the callable is not called any more. */
  void reset() noexcept {
    if (detail::Link* const link = std::exchange(m_link, nullptr)) link->End();
  }

  /** \cond */
  /* Use the functions below. */
  template <typename Setting, typename Callable>
  static Result<Watch> Begin(Callable&& callable) {
    using Chain = detail::Chain<Setting>;
    using Stored = std::decay_t<Callable>;
    static_assert(std::is_invocable_v<Stored&, typename Chain::Value>,
                  "the callable does not take the setting's value");
    class Callee final : public Chain::Callee {
     public:
      explicit Callee(Callable&& its_callable) : m_callable(std::forward<Callable>(its_callable)) {}
      void Call(typename Chain::Value value) override { m_callable(value); }

     private:
      Stored m_callable;
    };
    if (detail::IsNothing<Stored>(callable)) return {};
    std::unique_ptr<typename Chain::Callee> link(new (std::nothrow)
                                                     Callee(std::forward<Callable>(callable)));
    detail::Link* const added = link.get();
    const Status status = Chain::Add(std::move(link));
    return {status, status == Status::kOk ? Watch(added) : Watch()};
  }
  /** \endcond */

 private:
  explicit Watch(detail::Link* link) noexcept : m_link(link) {}

  detail::Link* m_link = nullptr;
};

/**
 * \brief Watches "db/tav/factory_reset": a factory reset begins or has ended.
 *
 * Throws nothing but what moving or copying the callable throws.
 *
 * \param callable What is called with the new value, an int; moved or copied.
 * \return The watch; Status::kFailed for a null function or an empty std::function, when the
 * platform refuses the watch or memory ran out.
 * \see tav_register_factory_reset_type_changed_cb
 */
template <typename Callable>
Result<Watch> WatchFactoryResetType(Callable&& callable) {
  return Watch::Begin<detail::FactoryResetType>(std::forward<Callable>(callable));
}

/**
 * \brief Watches "memory/tav/appsync": the synchronisation of the apps starts.
 * \param callable As for WatchFactoryResetType.
 * \return As for WatchFactoryResetType.
 * \see tav_register_appsync_start_changed_cb
 */
template <typename Callable>
Result<Watch> WatchAppsyncStart(Callable&& callable) {
  return Watch::Begin<detail::AppsyncStart>(std::forward<Callable>(callable));
}

/**
 * \brief Watches "db/homedeck/reset/tavcore": the state of the home screen's reset.
 * \param callable As for WatchFactoryResetType.
 * \return As for WatchFactoryResetType.
 * \see tav_register_homedeck_reset_status_changed_cb
 */
template <typename Callable>
Result<Watch> WatchHomedeckResetStatus(Callable&& callable) {
  return Watch::Begin<detail::HomedeckResetStatus>(std::forward<Callable>(callable));
}

/**
 * \brief Watches "memory/tav/app_install": an app was installed.
 * \param callable What is called with the app's id, a TextView: none when the setting holds no
 * text, else valid during the call; moved or copied.
 * \return As for WatchFactoryResetType.
 * \see tav_register_installed_appid_changed_cb
 */
template <typename Callable>
Result<Watch> WatchInstalledAppId(Callable&& callable) {
  return Watch::Begin<detail::InstalledAppId>(std::forward<Callable>(callable));
}

}  // namespace tav

#endif  // TAV_DB_API_WATCH_HPP_
