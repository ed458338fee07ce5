#include "generate.hpp"

#include <cstdio>
#include <random>

namespace vornelt::bench {

namespace {

std::string Tc(int64_t frames) {
    const int64_t rate = 25;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%02lld:%02lld:%02lld:%02lld", (long long)(frames / (3600 * rate)),
                  (long long)(frames / (60 * rate) % 60), (long long)(frames / rate % 60), (long long)(frames % rate));
    return buf;
}

class Writer {
public:
    Writer(const ListOptions& o) : o_(o), rng_(o.seed) {}

    std::string Run() {
        out_.reserve(size_t(o_.events) * 170);
        if (o_.gvg) {
            Line("BENCHMARK LIST");
            Line("SMPTE FRAME CODE");
        } else {
            Line("TITLE: BENCHMARK LIST");
            Line("FCM: NON-DROP FRAME");
        }
        Line("");
        for (int n = 1; n <= o_.events; ++n) Event(n);
        return std::move(out_);
    }

private:
    int Pick(int below) { return int(rng_() % uint32_t(below)); }

    void Line(const std::string& s) {
        out_ += s;
        out_ += "\r\n";
    }

    std::string Reel() {
        char buf[16];
        std::snprintf(buf, sizeof buf, "TAPE%03d", Pick(400));
        return buf;
    }

    void EventLine(int n, const std::string& reel, const char* mode, const std::string& trans, const std::string& rest,
                   int64_t srcIn, int64_t len, int64_t recIn) {
        char buf[256];
        std::snprintf(buf, sizeof buf,
                      o_.gvg ? "%04d %-6s %-5s %-4s %3s %s %s  %s %s" : "%03d  %-8s %-5s %-4s %3s %s %s %s %s",
                      n % (o_.gvg ? 10000 : 1000), reel.c_str(), mode, trans.c_str(), rest.c_str(), Tc(srcIn).c_str(),
                      Tc(srcIn + len).c_str(), Tc(recIn).c_str(), Tc(recIn + len).c_str());
        Line(buf);
    }

    // Where the next source begins, by the shape of the list.
    int64_t SourceIn(int64_t len) {
        switch (o_.shape) {
            case Shape::SameSource: return Pick(10) == 0 ? 90000 + Pick(100000) : 90000;
            case Shape::OneChain: {
                int64_t s = chain_;
                chain_ += len;
                return s;
            }
            case Shape::Mixed: break;
        }
        return int64_t(Pick(20) + 1) * 90000 + Pick(80000);
    }

    void Event(int n) {
        const int64_t len = 25 + Pick(200);
        const int kind = o_.shape == Shape::Mixed ? Pick(100) : 0;
        const std::string reel = Reel();
        const std::string clip =
            "* FROM CLIP NAME: shot_" + std::to_string(Pick(100000)) + "_v" + std::to_string(Pick(9)) + ".mov";
        if (kind < 50) {  // a cut
            EventLine(n, reel, "V", "C", "", SourceIn(len), len, rec_);
            Line(clip);
        } else if (kind < 65) {  // a dissolve of two lines
            const int64_t from = SourceIn(len);
            EventLine(n, reel, "V", "C", "", from, 0, rec_);
            EventLine(n, Reel(), "V", "D", "025", SourceIn(len), len, rec_);
            Line(clip);
            Line("* TO CLIP NAME: shot_" + std::to_string(Pick(100000)) + ".mov");
        } else if (kind < 75) {  // a wipe
            char code[8];
            std::snprintf(code, sizeof code, "W%03d", 1 + Pick(354));
            EventLine(n, reel, "V", "C", "", SourceIn(len), 0, rec_);
            EventLine(n, Reel(), "V", code, "030", SourceIn(len), len, rec_);
            Line("* EFFECT NAME: WIPE");
        } else if (kind < 85) {  // a key of two lines, the foreground of zero length
            EventLine(n, reel, "V", "K", "B", SourceIn(len), len, rec_);
            const int64_t key = SourceIn(len);
            EventLine(n, Reel(), "V", "K", "", key, 0, rec_);
            Line("* KEY CLIP NAME: title_" + std::to_string(Pick(1000)));
        } else if (kind < 95) {  // audio
            EventLine(n, reel, Pick(2) ? "AA" : "AA/V", "C", "", SourceIn(len), len, rec_);
            Line("AUD  3    4");
        } else {  // a speed change or a freeze frame
            EventLine(n, reel, "V", "C", "", SourceIn(len), len, rec_);
            char m2[96];
            std::snprintf(m2, sizeof m2, "M2   %-8s %05.1f                %s", reel.c_str(),
                          Pick(3) ? 12.5 * Pick(5) : 0.0, Tc(90000 + Pick(1000)).c_str());
            Line(m2);
        }
        rec_ += len;
    }

    const ListOptions& o_;
    std::mt19937 rng_;
    std::string out_;
    int64_t rec_ = 90000;
    int64_t chain_ = 90000;
};

}  // namespace

std::string GenerateList(const ListOptions& options) { return Writer(options).Run(); }

}  // namespace vornelt::bench
