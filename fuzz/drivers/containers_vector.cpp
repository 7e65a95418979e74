// Actions on three arrays, beside the reference's lists.
#include <algorithm>

#include "containers.h"
#include "driver.h"

namespace fuzzing {
namespace {

template <class T>
using Array = orvex_991::vector<T>;

template <class Item, class Plain>
class Actions {
 public:
    explicit Actions(Reader& reader) : reader_(reader) {}

    void run() {
        while (reader_.left() > 0) {
            const int action = reader_.range(0, 13);
            auto got = of_library([] {}), want = of_reference([] {});
            const size_t to = index(), from = index();
            const int n = reader_.range(-2, 40), value = reader_.byte();
            Array<Item>&a = held_[to], &b = held_[from];
            List<Plain>&c = expected_[to], &d = expected_[from];
            // Growth doubles, and so does adding an array to itself.
            if (a.capacity + b.capacity > 5000 && action != 10) continue;
            got = of_library([&] { act(action, a, b, n, value); });
            want = of_reference([&] { act_plainly(action, c, d, n, value); });
            for (size_t k = 0; k < 3; ++k) {
                got.with("array", held_[k]);
                want.with("array", expected_[k]);
            }
            require_same(got, want, call("action on arrays", action, to, from, n));
        }
    }

 private:
    Reader& reader_;
    Array<Item> held_[3];
    List<Plain> expected_[3];

    size_t index() { return static_cast<size_t>(reader_.range(0, 2)); }

    static Item make(int value, const int*) { return value; }
    template <class T>
    static T make(int value, const T*) {
        return T(value % 5, value);
    }
    static Item item(int value) { return make(value, static_cast<const Item*>(nullptr)); }
    static void set(int& plain, int value) { plain = value; }
    static void set(List<int>& plain, int value) {
        plain.resize(value % 5);
        for (int& number : plain.items) number = value;
    }
    static Plain plain_item(int value) {
        Plain plain{};
        set(plain, value);
        return plain;
    }

    void act(int action, Array<Item>& a, Array<Item>& b, int n, int value) {
        switch (action) {
            case 0:
                return a.push_back(item(value));
            case 1:
                return a.push_back(b[n]);
            case 2:
                return void(a.pop_back());
            case 3:
                return void(a[n] = item(value));
            case 4:
                return a.reserve(n);
            case 5:
                return a.init_to_size(n, item(value));
            case 6:
                return a.init_to_size(n, b[value]);
            case 7:
                return a.double_the_size();
            case 8:
                return void(a += b);
            case 9:
                return void(a = b);
            case 10:
                return a.clear();
            case 11:
                return a.swap(b);
            case 12: {
                Array<Item> taken(std::move(a));
                if (a.size() != 0 || a.capacity() != 0 || a.data) fail("vector is moved wrongly");
                a = std::move(taken);
                return;
            }
            default:
                a = Array<Item>(n, item(value));
        }
    }

    void act_plainly(int action, List<Plain>& a, List<Plain>& b, int n, int value) {
        const auto init = [&](const Plain& kept) {
            a.reserve(n);
            a.items.assign(static_cast<size_t>(std::max(n, 0)), kept);
        };
        switch (action) {
            case 0:
                return a.push_back(plain_item(value));
            case 1:
                return a.push_back(Plain(b[n]));
            case 2:
                if (a.size() == 0) throw reference::Failure{4, ""};
                return a.items.pop_back();
            case 3:
                return void(a[n] = plain_item(value));
            case 4:
                return a.reserve(n);
            case 5:
                return init(plain_item(value));
            case 6:
                return init(Plain(b[value]));
            case 7:
                return a.reserve(a.capacity == 0 ? 100 : 2 * a.capacity);
            case 8: {
                const std::vector<Plain> more = b.items;
                a.reserve(a.size() + b.size());
                return void(a.items.insert(a.items.end(), more.begin(), more.end()));
            }
            case 9:
                return void(a = List<Plain>(b));
            case 10:
                return a.clear();
            case 11:
                return std::swap(a, b);
            case 12:
                return;
            default:
                reference::check(n >= 0, "size >= 0", "vector", "util_vector.h");
                a.clear();
                init(plain_item(value));
        }
    }
};

}  // namespace

void vectors(Reader& reader, bool nested) {
    if (nested)
        Actions<Array<int>, List<int>>(reader).run();
    else
        Actions<int, int>(reader).run();
}

}  // namespace fuzzing
