#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Bundle.h"
#include "platform/ContentTypes.h"
#include "platform/Locale.h"
#include "platform/Pasteboard.h"
#include "platform/UserDefaults.h"
#include "platform/UuidSource.h"
#include "platform/Workspace.h"

namespace quendo::fake {

struct FakeDefaults final : UserDefaults {
  using Date = std::chrono::system_clock::time_point;

  std::optional<std::string> string(std::string_view key) const override {
    const auto value = strings.find(key);
    return value == strings.end() ? std::nullopt : std::optional(value->second);
  }
  void setString(std::string_view key, std::string_view value) override {
    dates.erase(std::string(key));
    strings[std::string(key)] = value;
  }
  std::optional<Date> date(std::string_view key) const override {
    const auto value = dates.find(key);
    return value == dates.end() ? std::nullopt : std::optional(value->second);
  }
  void setDate(std::string_view key, Date value) override {
    strings.erase(std::string(key));
    dates[std::string(key)] = value;
  }

  std::map<std::string, std::string, std::less<>> strings;
  std::map<std::string, Date, std::less<>> dates;
};

struct FakeLocale final : Locale {
  std::optional<std::string> languageCode() const override { return code; }
  std::vector<std::string> preferredLanguages() const override { return languages; }
  std::optional<std::string> code = "pt";
  std::vector<std::string> languages = {"pt_BR", "pt"};
};

struct FakeBundle final : Bundle {
  std::optional<std::string> resourcePath() const override {
    if (whenAsked) whenAsked();
    return path;
  }
  std::optional<std::string> infoDictionaryString(std::string_view key) const override {
    const auto value = information.find(key);
    return value == information.end() ? std::nullopt : std::optional(value->second);
  }
  std::optional<std::string> path = "/app/share/quendo";
  /// Called before the resources are told.
  std::function<void()> whenAsked;
  std::map<std::string, std::string, std::less<>> information = {{"CFBundleShortVersionString", "1.5.0"},
                                                                 {"CFBundleVersion", "3"}};
};

struct FakePasteboard final : Pasteboard {
  void clearContents() override { contents.reset(); }
  bool setString(const std::string& text) override {
    if (refuses) return false;
    contents = text;
    return true;
  }
  std::optional<std::string> contents;
  bool refuses = false;
};

struct FakeWorkspace final : Workspace {
  void openUrl(const std::string& url) override { opened.push_back(url); }
  std::optional<std::string> documentsDirectory() const override { return documents; }
  std::string homeDirectory() const override { return "/home/user"; }
  std::vector<std::string> opened;
  std::optional<std::string> documents = "/home/user/Documents";
};

struct FakeContentTypes final : ContentTypes {
  std::optional<std::string> typeForExtension(std::string_view extension) const override {
    const auto type = types.find(extension);
    return type == types.end() ? std::nullopt : std::optional(type->second);
  }
  std::string plainText() const override { return "public.plain-text"; }
  std::string data() const override { return "public.data"; }
  /// The one without a name is never to be asked for.
  std::map<std::string, std::string, std::less<>> types = {
      {"md", "type.markdown"}, {"txt", "type.txt"}, {"", "type.nothing"}};
};

struct FakeUuids final : UuidSource {
  std::string randomUuid() override {
    ++made;
    return prefix + std::to_string(made);
  }
  std::string prefix = "UUID-";
  int made = 0;
};

}  // namespace quendo::fake
