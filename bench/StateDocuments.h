#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quendo::bench {

/// A small generator with a fixed seed: every run on every machine measures the same documents.
class Sequence {
 public:
  std::uint32_t next(std::uint32_t bound) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::uint32_t>(state_ >> 33U) % bound;
  }

 private:
  std::uint64_t state_ = 0x9E3779B97F4A7C15ULL;
};

/// The contents of a JSON string: Markdown in the interface's languages, with the escapes and non-ASCII
/// characters found in notes.
inline void appendMarkdown(std::string& text, Sequence& sequence, std::size_t bytes) {
  static constexpr const char* words[] = {"a ",
                                          "de ",
                                          "que ",
                                          "nota ",
                                          "reunião ",
                                          "amanhã ",
                                          "the ",
                                          "meeting ",
                                          "**importante** ",
                                          "lista ",
                                          "[link](https://example.org/a/b) ",
                                          "ação ",
                                          "`code` ",
                                          "días ",
                                          "for ",
                                          "and ",
                                          "projeto ",
                                          "semana ",
                                          "coração ",
                                          "plan ",
                                          "\\\"citação\\\" ",
                                          "😀 ",
                                          "\\n- ",
                                          "\\n\\n## ",
                                          "\\n- [ ] ",
                                          "\\n",
                                          "revisar ",
                                          "com ",
                                          "o ",
                                          "e ",
                                          "cliente ",
                                          "write ",
                                          "tomorrow ",
                                          "\\t"};
  const std::size_t target = text.size() + bytes;
  while (text.size() < target) text += words[sequence.next(sizeof(words) / sizeof(words[0]))];
}

/// A state document of at most `bytes` bytes, and nearly that: notes as the page stores them.
inline std::string notesDocument(std::size_t bytes, std::int64_t revision) {
  Sequence sequence;
  std::string text = "{\"revision\":" + std::to_string(revision) + ",\"notes\":[";
  const std::string tail = "{}]}";
  std::string note;
  for (std::size_t id = 0;; ++id) {
    note = "{\"id\":\"note-" + std::to_string(id) + "\",\"title\":\"";
    appendMarkdown(note, sequence, 20);
    note += "\",\"content\":\"";
    appendMarkdown(note, sequence, 200 + sequence.next(4000));
    note += "\",\"pinned\":false,\"createdAt\":" + std::to_string(1700000000000 + id) +
            ",\"tags\":[\"casa\",\"work\"]},";
    if (text.size() + note.size() + tail.size() > bytes) return text + tail;
    text += note;
  }
}

/// A document that consists almost entirely of one string.
inline std::string longStringDocument(std::size_t bytes) {
  Sequence sequence;
  std::string text = "{\"revision\":1,\"content\":\"";
  appendMarkdown(text, sequence, bytes);
  return text + "\"}";
}

/// A document that consists mostly of numbers in all common forms.
inline std::string numbersDocument(std::size_t bytes) {
  Sequence sequence;
  std::string text = "{\"revision\":1,\"values\":[0";
  while (text.size() < bytes) {
    text += ',';
    if (sequence.next(4) == 0) text += '-';
    text += std::to_string(sequence.next(1U << (4 + sequence.next(27))));
    const std::uint32_t form = sequence.next(8);
    if (form < 3) text += '.' + std::to_string(sequence.next(1'000'000));
    if (form == 3) text += "e-" + std::to_string(sequence.next(20));
  }
  return text + "]}";
}

}  // namespace quendo::bench
