#include "config/cfg_nr_waveform.h"
#include "host/analysis/nrwave_level.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_input.h"
#include "host/nrwave_listing.h"
#include "host/nrwave_output.h"
#include "host/nrwave_path.h"
#include "host/nrwave_prach.h"
#include "host/nrwave_record.h"
#include "host/nrwave_saved.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_value.h"

#include <complex>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <streambuf>
#include <string>
#include <variant>
#include <vector>

// The compiled half of the Python module: paths, steps and runs without Python's lock. Each operation gives a tuple:
// what it found, what ended it (None where nothing did), its corrections, and the lines that the library printed on
// the way. python/nrwave/__init__.py makes exceptions, warnings and log records of them.

namespace py = pybind11;

using namespace vek::nr_mod_lib;

namespace nrwave
{

namespace
{

/// Takes the place of a standard stream's buffer: what a thread prints while it works for the module is kept, all else
/// goes where it went before.
class kept_stream_t : public std::streambuf
{
public:
    explicit kept_stream_t(std::ostream& stream) : m_stream(stream), m_before(stream.rdbuf(this)) {}
    ~kept_stream_t() override { m_stream.rdbuf(m_before); }
    kept_stream_t(const kept_stream_t&) = delete;
    kept_stream_t& operator=(const kept_stream_t&) = delete;

    /// Where the lines of this thread go; null where they go on.
    static thread_local std::string* kept;

private:
    int_type overflow(int_type c) override
    {
        if (!kept)
            return m_before->sputc(traits_type::to_char_type(c));
        if (!traits_type::eq_int_type(c, traits_type::eof()))
            kept->push_back(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char* text, std::streamsize count) override
    {
        if (!kept)
            return m_before->sputn(text, count);
        kept->append(text, static_cast<std::size_t>(count));
        return count;
    }
    int sync() override { return kept ? 0 : m_before->pubsync(); }

    std::ostream& m_stream;
    std::streambuf* m_before;
};

thread_local std::string* kept_stream_t::kept = nullptr;

/// Keeps a thread's lines while it lives.
class keeping_t
{
public:
    explicit keeping_t(std::string& text) { kept_stream_t::kept = &text; }
    ~keeping_t() { kept_stream_t::kept = nullptr; }
    keeping_t(const keeping_t&) = delete;
    keeping_t& operator=(const keeping_t&) = delete;
};

/// One engine runs at a time, and one object writes files: both are the process's.
std::mutex g_engine;

/// Bytes that are no UTF-8, as a file's name or a label may hold them, come as Python has them in names.
py::object object_of(const std::string& text)
{
    return py::reinterpret_steal<py::object>(
        PyUnicode_DecodeUTF8(text.data(), static_cast<py::ssize_t>(text.size()), "surrogateescape"));
}

py::object object_of(const std::vector<std::string>& texts)
{
    py::list list;
    for (const std::string& text : texts)
        list.append(object_of(text));
    return list;
}

template <class found_t>
py::object object_of(const found_t& found)
{
    return py::cast(found);
}

/// The form of a value, its texts, and whether there are several.
struct values_t
{
    const char* kind = "";
    std::vector<std::string> texts;
    bool is_list = false;
};

py::object object_of(const values_t& values)
{
    return py::make_tuple(values.kind, object_of(values.texts), values.is_list);
}

/// Works without Python's lock, with another held, and gives the tuple that the head of this file tells of.
template <class work_t>
py::tuple worked(std::mutex& mutex, std::vector<std::string>& corrections, work_t work)
{
    decltype(work()) found{};
    std::optional<std::string> failure;
    std::vector<std::string> told;
    std::string printed;
    {
        const py::gil_scoped_release unlocked;
        const std::scoped_lock one_at_a_time(mutex);
        const keeping_t keeping(printed);
        try {
            found = work();
        } catch (const failure_t& failed) {
            failure = one_line(failed.what());
        }
        told.swap(corrections);
    }
    return py::make_tuple(object_of(found), failure ? object_of(*failure) : py::none(), object_of(told),
                          object_of(printed));
}

/// A finished run. It stands for itself: the waveform may be changed, or gone.
class result_t
{
public:
    explicit result_t(cfg_nr_waveform_t& waveform)
    {
        m_engine.set_trace_file_enable(false);
        generate(waveform, m_engine);
        m_configuration = waveform.get_waveform_manager();
        m_rate = waveform.get_waveform_sample_rate();
        m_level.add(samples().data(), samples().size());
    }

    const lib_nr_phy_t::signal_t& samples() const { return m_engine.get_baseband_signal_data(); }
    std::uint64_t rate() const { return m_rate; }
    const level_t& level() const { return m_level; }
    std::vector<std::string> shortfalls() const { return shortfalls_of(m_engine.get_record()); }

    py::tuple map(unsigned int carrier, unsigned int numerology, unsigned int frame) const
    {
        std::vector<std::string> none;
        resource_map_t cells;
        const py::tuple answer = worked(g_engine, none, [&] {
            check_place(m_configuration, carrier, numerology, frame);
            lib_nr_phy_t engine; // the run's own keeps its samples and its record
            cells = m_configuration.get_carrier(carrier).get_carrier_type() == LIB_NR_PRACH
                        ? cells_of(prach_map_of(m_configuration, engine, carrier, numerology, frame), m_configuration,
                                   numerology)
                        : map_of(m_configuration, engine, carrier, numerology, frame);
            return std::monostate{};
        });
        const py::array_t<std::uint8_t> rows({cells.symbols, cells.subcarriers}, cells.owners.data());
        return py::make_tuple(rows, answer[1], answer[2], answer[3]);
    }

private:
    lib_nr_phy_t m_engine;
    lib_nr_waveform_configure_manager_t m_configuration;
    std::uint64_t m_rate = 0;
    level_t m_level;
};

/// The samples where the engine has them. The array keeps the result alive.
py::array samples_of(const py::object& result)
{
    const auto& samples = result.cast<const result_t&>().samples();
    py::array_t<std::complex<double>> array(static_cast<py::ssize_t>(samples.size()), samples.data(), result);
    array.attr("setflags")(py::arg("write") = false);
    return array;
}

/// A configuration with the steps that it took.
class waveform_t
{
public:
    waveform_t() { _forget(); }

    py::tuple set(const std::string& path, const std::string& value)
    {
        return _worked([&] {
            resolve(m_waveform, path); // a path alone: no verb, no equals sign
            m_stepper->apply(path + '=' + value);
            return std::monostate{};
        });
    }

    /// The form of the value at a path, and all of its texts where it has several.
    py::tuple get(const std::string& path)
    {
        return _worked([&] {
            const target_t target = resolve(m_waveform, path);
            if (target.figure)
                return values_t{"figure", {target.figure->read(target.facade)}, false};
            if (!target.leaf)
                throw failure_t(shortened(path) + " is no setting");
            const bool all = target.leaf->is_indexed() && !target.index;
            std::vector<std::string> texts;
            for (unsigned int i = 0; i < (all ? target.leaf->count(target.facade) : 1); ++i)
                texts.push_back(target.leaf->read(target.facade, target.index.value_or(i)));
            return values_t{_kind(target.leaf->form), texts, all};
        });
    }

    py::tuple step(const std::string& text)
    {
        return _worked([&] { return _tried([&] { m_stepper->apply(text); }); });
    }
    py::tuple load(const std::string& file)
    {
        return _worked([&] { return _tried([&] { m_stepper->load(file); }); });
    }
    py::tuple recipe(const std::string& file)
    {
        return _worked([&] { return _tried([&] { m_stepper->apply_recipe(file); }); });
    }

    py::tuple save(const std::string& file)
    {
        return _worked([&] {
            const std::scoped_lock writer(g_engine);
            m_stepper->tell_resets();
            const saved_settings_t saved = saved_settings(m_waveform);
            m_corrections.insert(m_corrections.end(), saved.losses.begin(), saved.losses.end());
            write_text(file, saved.text, inputs_t()); // also in place of one that it was loaded from
            return std::monostate{};
        });
    }

    py::tuple steps(const std::string& path)
    {
        return _worked([&] { return path.empty() ? steps_of(m_waveform) : steps_at(m_waveform, path); });
    }

    py::tuple offers(const std::string& path)
    {
        return _worked([&] {
            const target_t target = resolve(m_waveform, path);
            if (!target.leaf)
                throw failure_t(shortened(path) + " is no setting");
            return target.leaf->has_offer() ? target.leaf->on_offer(target.facade) : target.leaf->enumerators();
        });
    }

    py::tuple figures(const std::string& path)
    {
        return _worked([&] {
            const target_t target = resolve(m_waveform, path, reading_t::list_first);
            if (!is_facade(target))
                throw failure_t(shortened(path) + " has no figures");
            std::map<std::string, std::string> figures;
            for (const cfg_nr_figure_t& figure : target.table->figures)
                figures[figure.name] = figure.read(target.facade);
            return figures;
        });
    }

    py::tuple count(const std::string& path)
    {
        return _worked([&] {
            const target_t target = resolve(m_waveform, path, reading_t::list_first);
            if (!target.list || target.index || target.leaf || target.figure)
                throw failure_t(shortened(path) + " is no list");
            return target.list->count(target.list_parent);
        });
    }

    py::tuple run()
    {
        return _worked([&] {
            const std::scoped_lock engine_of_the_process(g_engine);
            m_stepper->tell_resets();
            auto result = std::make_shared<result_t>(m_waveform);
            for (const std::string& line : result->shortfalls())
                m_corrections.push_back(line);
            return result;
        });
    }

private:
    template <class work_t>
    py::tuple _worked(work_t work)
    {
        return worked(m_mutex, m_corrections, work);
    }

    /// A file that breaks off leaves its stepper amid it: go on with a new one, which knows of no earlier step.
    template <class work_t>
    std::monostate _tried(work_t work)
    {
        try {
            work();
        } catch (...) {
            _forget();
            throw;
        }
        return {};
    }

    void _forget()
    {
        m_stepper.emplace(m_waveform, [this](const std::string& line) { m_corrections.push_back(line); });
    }

    static const char* _kind(cfg_nr_leaf_form_t form)
    {
        switch (form) {
        case cfg_nr_leaf_form_t::boolean:
            return "boolean";
        case cfg_nr_leaf_form_t::integer:
        case cfg_nr_leaf_form_t::unsigned_integer:
        case cfg_nr_leaf_form_t::unsigned_short:
        case cfg_nr_leaf_form_t::unsigned_byte:
        case cfg_nr_leaf_form_t::unsigned_long:
            return "whole";
        case cfg_nr_leaf_form_t::real:
            return "real";
        case cfg_nr_leaf_form_t::text:
        case cfg_nr_leaf_form_t::enumerator:
        case cfg_nr_leaf_form_t::enumerator_list:
        case cfg_nr_leaf_form_t::pair_list:
            break;
        }
        return "text";
    }

    std::mutex m_mutex;
    cfg_nr_waveform_t m_waveform;
    std::vector<std::string> m_corrections;
    std::optional<stepper_t> m_stepper;
};

std::vector<std::string> owner_names()
{
    std::vector<std::string> names;
    for (unsigned int owner = 0; owner < k_owners; ++owner)
        names.emplace_back(owner_name(static_cast<std::uint8_t>(owner)));
    return names;
}

} // namespace

} // namespace nrwave

PYBIND11_MODULE(_nrwave, module)
{
    using namespace nrwave;

    static const kept_stream_t out(std::cout);
    static const kept_stream_t err(std::cerr);

    module.attr("OWNERS") = py::tuple(py::cast(owner_names()));
    py::class_<result_t, std::shared_ptr<result_t>>(module, "Result")
        .def_property_readonly("samples", &samples_of)
        .def_property_readonly("rate", &result_t::rate)
        .def_property_readonly("peak_dbfs", [](const result_t& result) { return result.level().peak_dbfs(); })
        .def_property_readonly("rms_dbfs", [](const result_t& result) { return result.level().rms_dbfs(); })
        .def_property_readonly("papr_db", [](const result_t& result) { return result.level().papr_db(); })
        .def("map", &result_t::map);
    py::class_<waveform_t>(module, "Waveform")
        .def(py::init())
        .def("set", &waveform_t::set)
        .def("get", &waveform_t::get)
        .def("step", &waveform_t::step)
        .def("load", &waveform_t::load)
        .def("recipe", &waveform_t::recipe)
        .def("save", &waveform_t::save)
        .def("steps", &waveform_t::steps)
        .def("offers", &waveform_t::offers)
        .def("figures", &waveform_t::figures)
        .def("count", &waveform_t::count)
        .def("generate", &waveform_t::run);
}
