#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "fake/HostFixture.h"

namespace quendo {

using namespace std::chrono_literals;

inline const std::string kFolder = "/tmp/Quendo-Share-01234567-89AB-CDEF-0123-456789ABCDE1";

inline std::string answer(bool success, const std::string& attemptId) {
  return std::string("window.quendoNativeShareDidFinish?.(") + (success ? "true" : "false") + ", \"" +
         attemptId + "\")";
}

class NoteSharingTest : public fake::HostTest {
 protected:
  NoteSharingTest() {
    platform_.files.setDirectory("/tmp");
    platform_.uuids.prefix = "01234567-89AB-CDEF-0123-456789ABCDE";
  }
  void share(const std::string& attemptId, const std::string& url = "",
             const std::string& filename = "nota.md") {
    post("quendoShare", Value::Dictionary{{"attemptId", attemptId},
                                          {"title", "Title"},
                                          {"filename", filename},
                                          {"content", "content"},
                                          {"url", url}});
  }
  fake::FakeSharingPicker& picker() { return *platform_.toolkit.pickers.back(); }
  std::shared_ptr<fake::FakeSharingService> choose() {
    auto service = std::make_shared<fake::FakeSharingService>();
    picker().delegate->didChooseSharingService(service);
    return service;
  }
};

}  // namespace quendo
