#include "archive/content_hash.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace tonvale {

namespace {

constexpr std::size_t kBlockBytes = 64;
constexpr std::size_t kRounds = 64;

using State = std::array<std::uint32_t, 8>;

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes (FIPS 180-4,
// 4.2.2).
constexpr std::array<std::uint32_t, kRounds> kConstants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

// The same of the square roots of the first 8 primes (5.3.3).
constexpr State kInitialState{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

// The message schedule (6.2.2, step 1).
std::array<std::uint32_t, kRounds> Schedule(std::string_view block) {
    std::array<std::uint32_t, kRounds> words{};
    for (std::size_t i = 0; i < kBlockBytes; ++i) {
        words[i / 4] = words[i / 4] << 8 | static_cast<std::uint8_t>(block[i]);
    }
    for (std::size_t i = 16; i < kRounds; ++i) {
        const std::uint32_t a = words[i - 15];
        const std::uint32_t b = words[i - 2];
        words[i] = words[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3) + words[i - 7] +
                   (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10);
    }
    return words;
}

void TakeBlock(std::string_view block, State& state) {
    const auto words = Schedule(block);
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < kRounds; ++i) {
        const std::uint32_t t1 = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                 ((e & f) ^ (~e & g)) + kConstants[i] + words[i];
        const std::uint32_t t2 =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    const State added{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i) state[i] += added[i];
}

// The message with a one bit, zeros and its length in bits behind it, in whole blocks (5.1.1).
std::string Padded(std::string_view message) {
    std::string padded(message);
    padded += '\x80';
    while (padded.size() % kBlockBytes != kBlockBytes - 8) padded += '\0';
    const std::uint64_t bits = std::uint64_t{message.size()} * 8;
    for (int shift = 56; shift >= 0; shift -= 8) padded += static_cast<char>(bits >> shift & 0xFF);
    return padded;
}

std::string Sha256(std::string_view message) {
    const std::string padded = Padded(message);
    const std::string_view blocks = padded;
    State state = kInitialState;
    for (std::size_t at = 0; at < blocks.size(); at += kBlockBytes) {
        TakeBlock(blocks.substr(at, kBlockBytes), state);
    }
    std::string digest;
    for (const std::uint32_t word : state) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            digest += static_cast<char>(word >> shift & 0xFF);
        }
    }
    return digest;
}

std::string Base64(std::string_view bytes) {
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::string_view group = bytes.substr(at, 3);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            bits = bits << 8 | (i < group.size() ? static_cast<std::uint8_t>(group[i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text += i <= group.size() ? kDigits[bits >> (18 - 6 * i) & 63] : '=';
        }
    }
    return text;
}

}  // namespace

std::string ContentHash(std::string_view bytes) {
    return "sha256-" + Base64(Sha256(bytes));
}

}  // namespace tonvale
