// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/boxreading.h"

#include "recognition/boxrecord.h"
#include "recognition/readingchild.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <poll.h>
#include <set>

namespace {

constexpr int kSliceMs = 20;
constexpr int kGivenAway = 10; // of 19 steps: the child with the most boxes then gets a core to itself

using Children = std::vector<std::unique_ptr<ReadingChild>>;

// Groups of five in box order, the last one with all that remain; boxes that do not lie within `frame` are
// left out.
std::vector<ReadingChild::Task> shareOut(const std::vector<cv::Rect>& boxes, const cv::Rect& frame,
                                         int maxChildren)
{
    const int count = static_cast<int>(boxes.size());
    const int groups = std::min((count + kBoxesPerChild - 1) / kBoxesPerChild, std::max(1, maxChildren));
    std::vector<ReadingChild::Task> tasks(static_cast<std::size_t>(groups));
    for (int number = 0; number < count; ++number) {
        const cv::Rect& box = boxes[static_cast<std::size_t>(number)];
        const int group = std::min(number / kBoxesPerChild, groups - 1);
        if (!box.empty() && (box & frame) == box)
            tasks[static_cast<std::size_t>(group)].numbers.push_back(number);
    }
    for (int group = 0; group < groups; ++group) {
        tasks[static_cast<std::size_t>(group)].worker = group + 1;
        // A long last group decides when the page is done, so the others make way for it.
        if (group < groups - 1 && count > (groups + 1) * kBoxesPerChild)
            tasks[static_cast<std::size_t>(group)].nice = kGivenAway;
    }
    return tasks;
}

// Waits up to one slice for bytes; false when no child has anything left to say.
bool pollOnce(const Children& children)
{
    std::vector<pollfd> polled;
    std::vector<ReadingChild*> owners;
    for (const auto& child : children) {
        if (child->pipe() < 0)
            continue;
        polled.push_back({child->pipe(), POLLIN, 0});
        owners.push_back(child.get());
    }
    if (polled.empty())
        return false;
    if (poll(polled.data(), polled.size(), kSliceMs) <= 0)
        return true; // nothing yet, or a signal
    for (std::size_t i = 0; i < polled.size(); ++i)
        if (polled[i].revents != 0)
            owners[i]->readSome();
    return true;
}

// Reads all pipes to their ends; false when cancelled.
bool gather(const Children& children, const ReadingOptions& options)
{
    auto lastIdle = ReadingChild::Clock::now();
    while (pollOnce(children)) {
        for (const auto& child : children)
            child->killWhenSilent(options.lineLimit);
        if (ReadingChild::Clock::now() - lastIdle < std::chrono::milliseconds(kSliceMs))
            continue;
        if (options.idle)
            options.idle();
        if (options.isCancelled && options.isCancelled())
            return false;
        lastIdle = ReadingChild::Clock::now();
    }
    return true;
}

// Takes the records that the child wrote; returns the numbers of its boxes that are not among them.
std::vector<int> collect(const ReadingChild& child, PageReading& page)
{
    const std::size_t before = page.boxes.size();
    decodeRecords(child.bytes(), page.boxes);
    std::set<int> arrived;
    for (std::size_t i = before; i < page.boxes.size(); ++i)
        arrived.insert(page.boxes[i].number);
    std::vector<int> missing;
    for (const int number : child.task().numbers)
        if (arrived.count(number) == 0)
            missing.push_back(number);
    return missing;
}

void noteLost(const ReadingChild& child, std::vector<int> numbers, PageReading& page)
{
    std::sort(numbers.begin(), numbers.end());
    page.lost.push_back({std::move(numbers), child.problem().empty() ? "ended early" : child.problem()});
}

// Reads the groups, each in a child of its own. Returns what children that had started left unread, for
// another try; of the others it is noted that they are lost.
std::vector<ReadingChild::Task> readGroups(std::vector<ReadingChild::Task> tasks, bool again,
                                           BoxReader& reader, const std::vector<cv::Rect>& boxes,
                                           const ReadingOptions& options, PageReading& page)
{
    Children children;
    int started = 0;
    for (ReadingChild::Task& task : tasks) {
        if (task.numbers.empty())
            continue;
        children.push_back(std::make_unique<ReadingChild>(std::move(task)));
        started += children.back()->start(reader, boxes, options) ? 1 : 0;
    }
    if (started > 0)
        trace(options.traceTo, "i am parent, start to read \n");
    page.children += started;
    page.cancelled = !gather(children, options);
    std::vector<ReadingChild::Task> left;
    for (const auto& child : children) {
        std::vector<int> missing = collect(*child, page);
        if (missing.empty() || page.cancelled)
            continue;
        if (again || !child->started()) {
            noteLost(*child, std::move(missing), page);
            continue;
        }
        // The first is the one at which the child ended: should that be its fault, the others are through.
        std::rotate(missing.begin(), missing.begin() + 1, missing.end());
        left.push_back({child->task().worker, std::move(missing), 0});
    }
    return left;
}

} // namespace

PageReading readBoxes(BoxReader& reader, cv::Size size, const std::vector<cv::Rect>& boxes,
                      const ReadingOptions& options)
{
    PageReading page;
    const cv::Rect whole(cv::Point(), size);
    const cv::Rect frame = options.frame.empty() ? whole : whole & cv::Rect(cv::Point(), options.frame);
    std::vector<ReadingChild::Task> left =
        readGroups(shareOut(boxes, frame, options.maxChildren), false, reader, boxes, options, page);
    if (!left.empty() && !page.cancelled)
        readGroups(std::move(left), true, reader, boxes, options, page);
    std::sort(page.boxes.begin(), page.boxes.end(),
              [](const BoxText& one, const BoxText& other) { return one.number < other.number; });
    return page;
}
