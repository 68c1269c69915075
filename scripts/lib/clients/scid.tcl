# Sourced by Scid as its options file, when scripts/screenshots starts it. The first engine of the list analyses a set
# position in the window that F2 opens; the analysis has to go on until it is stopped, and to end then. After it the
# second one analyses the same position in the window of the engines. Writes what happens to scid.log in the home folder:
# "ready" once the second one is deep enough, or "trouble" and a reason.

set ::startup(tip) 0
set ::docking::layout_list(1) {
    {MainWindowGeometry 1024x570+0+0}
    {{.pw vertical {}} {TPanedwindow {{.pw.pw0 horizontal 413} {TNotebook .nb .fdockmain}
        {TPanedwindow {{.pw.pw0.pw1 vertical 130} {TNotebook .tb2 .fdockpgnWin} {TNotebook .tb3 .fdockglistWin1}}}}}}
}

namespace eval driver {
    variable fen "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 0 10"
    variable deep_enough 7
    variable quiet 2000 ;# milliseconds after the end of an analysis in which no depth may come
    variable depth 0
}

proc driver::log {text} {
    set file [open ~/scid.log a]
    puts $file $text
    close $file
}

# Waits for the condition and carries out the script then.
proc driver::when {condition script} {
    if {[uplevel #0 [list expr $condition]]} {
        uplevel #0 $script
    } else {
        after 100 [list driver::when $condition $script]
    }
}

proc driver::start {} {
    sc_game new
    sc_game startBoard $::driver::fen
    ::notify::GameChanged
    ::makeAnalysisWin 1 0
    driver::when {$::analysis(depth1) >= $::driver::deep_enough} {
        if {!$::analysis(has_analyze1)} { driver::log "trouble: Scid has not learned of the command analyze" }
        ::toggleEngineAnalysis 1
        after 500 {
            set ::driver::depth $::analysis(depth1)
            set ::analysis(depth1) 0
            after $::driver::quiet driver::isStopped
        }
    }
}

proc driver::isStopped {} {
    if {$::analysis(depth1) != 0} {
        driver::log "trouble: the analysis goes on after it was stopped"
        return
    }
    driver::log "stopped at depth $::driver::depth"
    destroy .analysisWin1
    rename ::enginewin::updateDisplay ::driver::updateDisplay
    proc ::enginewin::updateDisplay {id msgData} {
        if {[lindex $msgData 1] ne ""} { set ::driver::depth [lindex $msgData 1] }
        ::driver::updateDisplay $id $msgData
    }
    set ::driver::depth 0
    ::enginewin::Open 1 [lindex $::engines(list) 1 0]
    driver::when {$::enginewin::engState(1) eq "idle"} {::enginewin::start 1}
    driver::when {$::driver::depth > $::driver::deep_enough} {driver::log ready}
}

after 1000 driver::start
