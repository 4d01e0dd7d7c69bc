-- Kelvane's LV2 build in Ardour 7, headless (ardour7-lua), on the Dummy backend whose inputs play
-- a steady sine wave. Two runs, each a fresh Ardour:
--   ardour7-lua KelvaneInArdour.lua save FOLDER     makes a session with a track through
--       Kelvane, loads a factory preset, sets the controls, checks that audio runs through it
--       at those settings, saves the session
--   ardour7-lua KelvaneInArdour.lua reload FOLDER   loads that session and checks that the
--       controls came back and that audio runs through it as before
-- Between the two, the test (RunArdour.cmake) puts the session's value of the Gain port back to
-- its default, so that only Kelvane's own state document, which Ardour keeps through the LV2
-- state extension, can bring the gain back: the reload checks the sound at the saved gain.
-- Any failed check raises an error, which ends ardour7-lua with exit code 1. The plug-in must be
-- on LV2_PATH.

local uri = "https://www.morvenna-audio.com/kelvane"
local phase, folder = arg[1], arg[2]
local name = "kelvane-ardour"

-- The controls set, in physical units, by their number among the plug-in's control ports. The
-- shaping amounts stay at 0 %, where the sound does not depend on when the tone began; the gain
-- and the detector times move.
local attack, release, gainControl, attackTime, releaseTime = 0, 1, 3, 4, 5
local settings = {
	[attack] = 0.0, [release] = 0.0, [gainControl] = -9.0, [attackTime] = 0.0, [releaseTime] = 2.0
}
local inputLevel, outputLevel = 7, 8
local gain = 10 ^ (-9.0 / 20.0)

local function check(condition, message)
	if not condition then error(message, 2) end
end

-- A second of the sine through the track, then Kelvane's meters: the output follows the input at
-- the gain set.
local function checkAudio(plugin)
	ARDOUR.LuaAPI.usleep(1000000)
	local input = ARDOUR.LuaAPI.get_processor_param(plugin, inputLevel)
	local output = ARDOUR.LuaAPI.get_processor_param(plugin, outputLevel)
	print(string.format("kelvane-ardour: %s: input level %.4f, output level %.4f", phase, input, output))
	check(input > 0.05, "no signal reaches Kelvane")
	check(math.abs(output / input - gain) < 0.05 * gain, "Kelvane's output does not follow its gain")
end

local backend = AudioEngine:set_backend("None (Dummy)", "", "")
check(not backend:isnil(), "no Dummy backend")
backend:set_device_name("Sine Wave")

if phase == "save" then
	local session = create_session(folder, name, 44100)
	check(session ~= nil, "cannot create a session in " .. folder)
	local track = session:new_audio_track(2, 2, nil, 1, "Drums", ARDOUR.PresentationInfo.max_order,
		ARDOUR.TrackMode.Normal, true):front()
	local plugin = ARDOUR.LuaAPI.new_plugin(session, uri, ARDOUR.PluginType.LV2, "")
	check(not plugin:isnil(), "Ardour does not find " .. uri)
	check(track:add_processor_by_index(plugin, 0, nil, true) == 0, "cannot add Kelvane to the track")
	local lv2 = plugin:to_insert():plugin(0)
	local preset = lv2:preset_by_label("Punchier Kick")
	check(preset ~= nil and lv2:load_preset(preset), "Ardour does not load the factory preset")
	check(ARDOUR.LuaAPI.get_processor_param(plugin, attack) == 60.0
		and ARDOUR.LuaAPI.get_processor_param(plugin, gainControl) == -2.0, "the preset set other values")
	track:monitoring_control():set_value(ARDOUR.MonitorChoice.MonitorInput, PBD.GroupControlDisposition.NoGroup)
	for control, value in pairs(settings) do
		check(ARDOUR.LuaAPI.set_processor_param(plugin, control, value), "cannot set control " .. control)
	end
	checkAudio(plugin)
	session:save_state("", false, false, false, false, false)
	close_session()
elseif phase == "reload" then
	local session = load_session(folder, name)
	check(session ~= nil, "cannot load the session in " .. folder)
	local track = session:route_by_name("Drums")
	check(not track:isnil(), "the track is gone")
	local plugin = track:nth_plugin(0)
	check(not plugin:isnil() and plugin:name() == "Kelvane", "Kelvane is gone from the track")
	for control, value in pairs(settings) do
		local restored = ARDOUR.LuaAPI.get_processor_param(plugin, control)
		if control == gainControl then value = 0.0 end
		check(restored == value, string.format("control %d came back as %s, not %s", control, restored, value))
	end
	track:to_track():monitoring_control():set_value(ARDOUR.MonitorChoice.MonitorInput,
		PBD.GroupControlDisposition.NoGroup)
	checkAudio(plugin)
	close_session()
else
	error("the phase is save or reload")
end
print("kelvane-ardour: " .. phase .. " passed")
