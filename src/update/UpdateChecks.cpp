#include "update/UpdateChecks.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <string_view>
#include <system_error>
#include <utility>

#include "files/Url.h"
#include "platform/SiteConfiguration.h"
#include "text/Graphemes.h"
#include "text/Trimming.h"
#include "update/QuendoVersion.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kFirstCheckDelay = 8s;
constexpr std::chrono::milliseconds kCheckInterval = 6h;
constexpr std::chrono::seconds kMinimumTimeBetweenAutomaticChecks = 6h;
constexpr std::chrono::seconds kMinimumTimeBetweenOffersOfAVersion = 24h;
constexpr std::chrono::milliseconds kRequestTimeout = 15s;
constexpr int kMaximumRedirects = 10;
constexpr std::size_t kMaximumManifestBytes = 100'000;
constexpr std::size_t kMaximumNotesCharacters = 1200;

constexpr std::string_view kLastAutomaticCheckKey = "QuendoLastAutomaticUpdateCheck";
constexpr std::string_view kLastPromptedVersionKey = "QuendoLastPromptedUpdateVersion";
constexpr std::string_view kLastPromptDateKey = "QuendoLastUpdatePromptDate";

// Shown in Portuguese, whatever the interface language.
constexpr std::string_view kCheckUnderWay = "A verificação já está em andamento";

/// Whether less than `limit` has passed since a stored date; true for a date in the future.
bool isWithin(std::optional<std::chrono::system_clock::time_point> date, std::chrono::seconds limit,
              std::chrono::system_clock::time_point now) {
  // Subtracting the two dates could overflow.
  return date && *date > now - limit;
}

std::string withVersion(std::string text, const std::string& version) {
  constexpr std::string_view kPlaceholder = "{version}";
  const std::size_t place = text.find(kPlaceholder);
  return place == std::string::npos ? text : text.replace(place, kPlaceholder.size(), version);
}

}  // namespace

UpdateChecks::~UpdateChecks() {
  if (updateTimer_) updateTimer_->cancel();
}

void UpdateChecks::startUpdateChecks() {
  if (updateTimer_) updateTimer_->cancel();
  armUpdateTimer();
  mainQueue_.asyncAfter(kFirstCheckDelay, lifetime_.guard([this] { performUpdateCheck(false); }));
}

void UpdateChecks::stop() {
  if (updateTimer_) updateTimer_->cancel();
  lifetime_ = Lifetime();
}

void UpdateChecks::armUpdateTimer() {
  updateTimer_ = mainQueue_.asyncAfter(kCheckInterval, lifetime_.guard([this] {
    performUpdateCheck(false);
    // After the check has read the clock: the next one must not fall just short of the rate limit.
    armUpdateTimer();
  }));
}

void UpdateChecks::performUpdateCheck(bool manual) {
  if (updateCheckInProgress_) {
    if (manual) pageCalls_.showToast(kCheckUnderWay);
    return;
  }
  const Date now = clock_.now();
  if (!manual && !passesRateLimit(now)) return;
  updateCheckInProgress_ = true;
  auto handle = lifetime_.guard([this, manual, now](const std::optional<HttpResponse>& response) {
    handleAnswer(manual, now, response);
  });
  // The completion may run on any thread. The queue outlives the host; this object may not.
  httpSession_.dataTask(makeRequest(), [&queue = mainQueue_, handle](std::optional<HttpResponse> response) {
    queue.async([handle, response = std::move(response)]() mutable { handle(response); });
  });
}

// The stored date counts as an attempt, whatever its outcome.
bool UpdateChecks::passesRateLimit(Date now) {
  if (isWithin(defaults_.date(kLastAutomaticCheckKey), kMinimumTimeBetweenAutomaticChecks, now)) return false;
  defaults_.setDate(kLastAutomaticCheckKey, now);
  return true;
}

HttpRequest UpdateChecks::makeRequest() const {
  HttpRequest request;
  request.url = kUpdateManifestUrl;
  request.headers = {{"Accept", "application/json"}, {"User-Agent", "Quendo/" + currentVersion()}};
  request.ignoresCachedData = true;
  request.timeout = kRequestTimeout;
  // One byte over the limit reveals a manifest that is too long.
  request.maximumBodyBytes = kMaximumManifestBytes + 1;
  request.redirect = [followed = 0](const std::string& url) mutable {
    if (urlScheme(url) != "https") return Redirect::answer;
    return ++followed > kMaximumRedirects ? Redirect::fail : Redirect::follow;
  };
  return request;
}

void UpdateChecks::handleAnswer(bool manual, Date now, const std::optional<HttpResponse>& response) {
  updateCheckInProgress_ = false;
  const std::optional<Release> release = releaseOf(response);
  if (!release) {
    if (manual) pageCalls_.showToast(localization_.tr("Não foi possível verificar atualizações"));
    return;
  }
  if (!isNewer(release->manifest)) {
    if (manual) pageCalls_.showToast(localization_.tr("Você já está na versão mais recente"));
    return;
  }
  if (!manual && wasOfferedRecently(release->manifest.version, now)) return;
  offer(*release, now);
}

std::optional<UpdateChecks::Release> UpdateChecks::releaseOf(const std::optional<HttpResponse>& response) {
  if (!response || response->status != 200 || response->body.size() > kMaximumManifestBytes)
    return std::nullopt;
  auto manifest = decodeReleaseManifest(response->body);
  if (!manifest) return std::nullopt;
  auto url = QuendoVersion::trustedDownloadURL(manifest->downloadURL);
  if (!url) return std::nullopt;
  return Release{std::move(*manifest), std::move(*url)};
}

bool UpdateChecks::isNewer(const QuendoReleaseManifest& manifest) const {
  const std::string version = currentVersion();
  return QuendoVersion::isNewer({.releaseVersion = manifest.version,
                                 .releaseBuild = manifest.build,
                                 .currentVersion = version,
                                 .currentBuild = currentBuild()});
}

bool UpdateChecks::wasOfferedRecently(const std::string& version, Date now) const {
  return defaults_.string(kLastPromptedVersionKey) == version &&
         isWithin(defaults_.date(kLastPromptDateKey), kMinimumTimeBetweenOffersOfAVersion, now);
}

// Neither replaces an open sheet nor queues behind it: the next check offers the release again.
void UpdateChecks::offer(const Release& release, Date now) {
  if (!surface_.window) {
    std::fputs("quendo: an update was found without a window to offer it in\n", stderr);
    std::terminate();
  }
  if (surface_.window->hasAttachedSheet()) return;
  defaults_.setString(kLastPromptedVersionKey, release.manifest.version);
  defaults_.setDate(kLastPromptDateKey, now);
  presentUpdateAlert(release.manifest, release.downloadURL);
}

void UpdateChecks::presentUpdateAlert(const QuendoReleaseManifest& manifest, const std::string& downloadURL) {
  Alert alert;
  alert.style = AlertStyle::informational;
  alert.messageText = withVersion(localization_.tr("Quendo {version} está disponível"), manifest.version);
  alert.informativeText =
      withVersion(localization_.tr("Você está usando a versão {version}. Atualize para receber as melhorias "
                                   "mais recentes."),
                  currentVersion());
  const std::string releaseNotes = manifest.releaseNotes.value_or("");
  const std::string_view notes = trimmed(releaseNotes);
  if (!notes.empty()) {
    alert.informativeText += "\n\n";
    alert.informativeText += firstCharacters(notes, kMaximumNotesCharacters);
  }
  alert.buttons = {localization_.tr("Baixar atualização"), localization_.tr("Lembrar depois")};
  surface_.window->beginSheet(alert, lifetime_.guard([this, downloadURL](const AlertResult& result) {
    if (result.button == 0) workspace_.openUrl(downloadURL);
  }));
}

std::string UpdateChecks::currentVersion() const {
  return bundle_.infoDictionaryString("CFBundleShortVersionString").value_or("0.0.0");
}

std::int64_t UpdateChecks::currentBuild() const {
  const std::string text = bundle_.infoDictionaryString("CFBundleVersion").value_or("0");
  std::string_view digits = text;
  // The parser below accepts only a minus sign.
  if (digits.starts_with('+')) {
    digits.remove_prefix(1);
    if (digits.starts_with('-')) return 0;
  }
  std::int64_t build = 0;
  const char* const end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, build);
  return error == std::errc() && rest == end ? build : 0;
}

}  // namespace quendo
