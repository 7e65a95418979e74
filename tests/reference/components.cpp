#include "components.h"

#include <algorithm>
#include <utility>

namespace reference {

Forest::Forest(int n) {
    check(n >= 0, "size >= 0", "vector", "util_vector.h");
    parents.resize(n);
    for (int i = 0; i < n; ++i) parents[i] = i;
}

int Forest::root(int id) {
    while (parents[id] != id) id = parents[id];
    return id;
}

int Forest::join(int a, int b) {
    const int ra = root(a);
    const int rb = root(b);
    if (ra < rb) {
        parents[rb] = ra;
        parents[b] = ra;
        parents[a] = ra;
        return ra;
    }
    parents[ra] = rb;
    parents[b] = rb;
    parents[a] = rb;
    return rb;
}

int Forest::remap(List<int>& out) {
    const int n = parents.size();
    out.resize(n);
    if (n < 2) return 0;
    int count = 0;
    for (int i = 1; i < n; ++i) {
        if (parents[i] == i)
            out[i] = ++count;
        else
            out[i] = out[parents[i]];
    }
    return count;
}

void quick_partition(List<int>& v, int low, int high, const std::function<bool(int, int)>& before) {
    while (low < high) {
        const int pivot = v[low];
        int i = low, j = high;
        while (i < j) {
            while (i < j && !before(v[j], pivot)) --j;
            v[i] = v[j];
            while (i < j && !before(pivot, v[i])) ++i;
            v[j] = v[i];
        }
        v[j] = pivot;
        quick_partition(v, low, j - 1, before);
        low = j + 1;
    }
}

void bwlabel(const Image<Byte>& src, Image<int>& dst, int& num) {
    check(!src.empty(), "!src.empty()", "bwlabel");
    check(1 == src.channels, "1 == src.channels", "bwlabel");
    dst.create(src.rows, src.cols, 1, 0);
    src.flat();
    Forest forest(src.rows * src.cols / 2);
    int counter = 0;
    const auto pixel = [&](int r, int c) { return src.data.at(static_cast<size_t>(r * src.cols + c)); };
    const auto label = [&](int r, int c) -> int& {
        return dst.data.at(static_cast<size_t>(r * src.cols + c));
    };
    label(0, 0) = counter = pixel(0, 0) == 255 ? 1 : 0;
    for (int c = 1; src.rows > 0 && c < src.cols; ++c) {
        if (pixel(0, c) == 0) continue;
        label(0, c) = label(0, c - 1) != 0 ? label(0, c - 1) : ++counter;
    }
    for (int r = 1; r < src.rows; ++r) {
        if (pixel(r, 0) != 0) label(r, 0) = label(r - 1, 0) != 0 ? label(r - 1, 0) : ++counter;
        for (int c = 1; c < src.cols; ++c) {
            if (pixel(r, c) == 0) continue;
            const int left = label(r, c - 1), up = label(r - 1, c);
            if (left == 0 && up == 0)
                label(r, c) = ++counter;
            else if (left == 0)
                label(r, c) = up;
            else if (up == 0 || up == left)
                label(r, c) = left;
            else
                label(r, c) = forest.join(left, up);
        }
    }
    const int created = forest.parents.size();
    forest.parents.resize(counter + 1);
    for (int i = created; i <= counter; ++i) forest.parents[i] = i;
    List<int> out;
    out.reserve(100);
    num = forest.remap(out);
    for (int& element : dst.data)
        if (element != 0) element = out[element];
    print_line("bwlabel cost time: #ms");
}

namespace {

int area(const Rect& rect) {
    return wrapping_product(rect.width, rect.height);
}

}  // namespace

void connectdComponent(const Image<Byte>& src, List<Rect>& rects, List<List<Point>>* points) {
    check(!src.empty(), "!src.empty()", "connectdComponent");
    rects.clear();
    try {
        Image<int> labels;
        int count = 0;
        bwlabel(src, labels, count);
        struct Box {
            Point low, high;
        };
        std::vector<Box> boxes(static_cast<size_t>(count), Box{{src.cols, src.rows}, {0, 0}});
        for (int y = 0; y < src.rows; ++y) {
            for (int x = 0; x < src.cols; ++x) {
                const int k = labels.at(y, x);
                if (k <= 0) continue;
                Box& box = boxes.at(static_cast<size_t>(k) - 1);
                box.low = {std::min(box.low.x, x), std::min(box.low.y, y)};
                box.high = {std::max(box.high.x, x), std::max(box.high.y, y)};
            }
        }
        rects.resize(count);
        for (int i = 0; i < count; ++i) {
            const Box& box = boxes[static_cast<size_t>(i)];
            rects[i] = {box.low.x, box.low.y, box.high.x + 1 - box.low.x, box.high.y + 1 - box.low.y};
        }
        if (!points) {
            for (int i = 0; i < count - 1; ++i)
                for (int j = 0; j < count - 1 - i; ++j)
                    if (!(area(rects[j + 1]) < area(rects[j]))) std::swap(rects[j], rects[j + 1]);
            return;
        }
        points->clear();
        points->resize(count);
        for (int y = 0; y < src.rows; ++y)
            for (int x = 0; x < src.cols; ++x)
                if (labels.at(y, x) > 0) (*points)[labels.at(y, x) - 1].push_back({x, y});
        List<int> index;
        for (int i = 0; i < count; ++i) index.push_back(i);
        if (count > 0)
            quick_partition(index, 0, count - 1,
                            [&](int a, int b) { return area(rects[a]) > area(rects[b]); });
        List<Rect> sorted_rects;
        sorted_rects.resize(count);
        List<List<Point>> sorted_points;
        sorted_points.resize(count);
        for (int i = 0; i < count; ++i) {
            sorted_rects[i] = rects[index[i]];
            List<Point>& list = sorted_points[i];
            const List<Point>& from = (*points)[index[i]];
            list.reserve(from.size());
            for (const Point& point : from.items) list.push_back(point);
        }
        std::swap(rects, sorted_rects);
        std::swap(*points, sorted_points);
        print_line("connect component got cost time: #ms");
    } catch (const Failure&) {
        throw Failure{2, ""};
    }
}

void divideComponentsToRows(const List<Rect>& rects, List<List<Rect>>& row_groups) {
    row_groups.clear();
    if (rects.size() == 0) return;
    int bottom = 0;
    for (const Rect& rect : rects.items)
        bottom = std::max(bottom, wrapping(static_cast<int64_t>(rect.y) + rect.height));
    List<int> occupied;
    occupied.resize(bottom);
    for (const Rect& rect : rects.items)
        for (int r = rect.y; r < wrapping(static_cast<int64_t>(rect.y) + rect.height); ++r) occupied[r] = 1;
    List<int> starts, ends;
    for (int r = 0; r < bottom; ++r) {
        if (occupied[r] == 1 && (r == 0 || occupied[r - 1] == 0)) starts.push_back(r);
        if (occupied[r] == 1 && (r == bottom - 1 || occupied[r + 1] == 0)) ends.push_back(r);
    }
    if (starts.size() == ends.size()) {
        const int bands = starts.size();
        row_groups.resize(bands);
        for (const Rect& rect : rects.items) {
            int band = bands - 1;
            while (band >= 0 && starts[band] > rect.y) --band;
            if (band <= bands) row_groups[band].push_back(rect);
        }
    }
    for (List<Rect>& band : row_groups.items) {
        const int n = band.size();
        if (n < 2) continue;
        for (int i = 0; i < n - 1; ++i)
            for (int j = 0; j < n - 1 - i; ++j)
                if (band[j + 1].x < band[j].x) std::swap(band[j], band[j + 1]);
    }
}

}  // namespace reference
